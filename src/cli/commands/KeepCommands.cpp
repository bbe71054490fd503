#include "Json.h"
#include "commands/CliCommands.h"
#include "keep/KeptPaths.h"
#include "shown/Output.h"

#include <iostream>
#include <unistd.h>

namespace vellmoor::cli {
namespace {

using Change = ListChange (*)(const Platform&, const SystemLayout&, const Path&);

/// Changes the list for each path: failed when one failed, nothing to do when all were as they should be.
ExitStatus changeAll(const terminal::OwnSystem& own, const Call& call, Change change, const char* unchanged) {
    ExitStatus status = ExitStatus::NothingToDo;
    for (const Path& path : call.paths) {
        const ListChange changed = change(*own.platform, own.layout, path);
        if (!changed) {
            status = fail(shown(path) + ": " + changed.error());
        } else if (!*changed) {
            complain(shown(path) + ": " + L::tr(unchanged));
        } else if (status == ExitStatus::NothingToDo) {
            status = ExitStatus::Done;
        }
    }
    return status;
}

} // namespace

ExitStatus runKeep(const terminal::OwnSystem& own, const Call& call) {
    for (const Path& path : call.paths) {
        if (!own.platform->exists(path)) {
            complain(shown(path) + ": " + L::tr("目前不存在"));
        }
    }
    return changeAll(own, call, &keep, "已在保留列表中");
}

ExitStatus runOffer(const terminal::OwnSystem& own, const Call& call) {
    return changeAll(own, call, &offerAgain, "不在保留列表中");
}

ExitStatus runKept(const terminal::OwnSystem& own, const Call& call) {
    const auto kept = KeptPaths::read(*own.platform, own.layout);
    if (!kept) {
        return fail(L::tr("无法读取保留列表：%@", kept.error()));
    }
    if (call.wantsJson) {
        terminal::Json list = terminal::Json::array();
        for (const Path& path : kept->paths()) {
            list.push_back({{"path", path.string()}, {"exists", own.platform->exists(path)}});
        }
        std::cout << terminal::text(list) << '\n';
        return ExitStatus::Done;
    }
    const bool isWatched = ::isatty(STDOUT_FILENO) != 0; // a script gets the bytes as they are
    for (const Path& path : kept->paths()) {
        std::cout << (isWatched ? shown(path) : path.native()) << '\n';
    }
    return ExitStatus::Done;
}

} // namespace vellmoor::cli
