#include "call/CommandLine.h"

#include "CancelToken.h"
#include "call/Call.h"
#include "call/HelpPage.h"
#include "commands/CliCommands.h"
#include "shown/Output.h"
#include "shown/Stop.h"

#include <exception>
#include <iostream>
#include <unistd.h>

namespace vellmoor::cli {
namespace {

ExitStatus runCommand(const terminal::OwnSystem& own, const Call& call) {
    switch (call.command) {
    case Command::Scan:
        return runScan(own, call);
    case Command::Clean:
        return runClean(own, call);
    case Command::Keep:
        return runKeep(own, call);
    case Command::Kept:
        return runKept(own, call);
    case Command::Offer:
        return runOffer(own, call);
    case Command::History:
        return runHistory(own, call);
    case Command::PutBack:
        return runPutBack(own, call);
    case Command::Version:
        std::cout << "vellmoor-cli " VELLMOOR_VERSION "\n";
        return ExitStatus::Done;
    case Command::Help:
        std::cout << helpPage();
        return ExitStatus::Done;
    }
    return ExitStatus::WrongCall;
}

ExitStatus run(const std::vector<std::string>& words, const std::filesystem::path& root) {
    const terminal::OwnSystem own = terminal::openOwnSystem({}, root);
    terminal::chooseTexts(*own.platform, own.layout, askedLanguage(words));
    const auto call = parseCall(words);
    if (!call) {
        return fail(call.error(), ExitStatus::WrongCall);
    }
    // It would act on root's home, or leave files of root's in that of the user.
    if (call->changesFiles() && ::geteuid() == 0) {
        return fail(L::tr("以 root 身份运行时不会改动任何文件，请用你自己的账户"));
    }
    try {
        return runCommand(own, *call);
    } catch (const ScanCancelled&) {
        return fail(L::tr("已停止"));
    }
}

} // namespace

int runCommandLine(const std::vector<std::string>& words, const std::filesystem::path& root) {
    stopOnSignals();
    ExitStatus status = ExitStatus::Failed;
    try {
        status = run(words, root);
    } catch (const std::exception& error) {
        complain(error.what()); // memory can run out
    }
    std::cout.flush();
    return static_cast<int>(std::cout ? status : ExitStatus::Failed);
}

} // namespace vellmoor::cli
