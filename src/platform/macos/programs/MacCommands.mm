// Tools as child processes, by NSTask: no shell, the environment and folder of this process, nothing else of it.
// Both members block until the tool has ended. One that a signal ended answers the signal's number as status.
#include "MacPlatform.h"
#include "values/FoundationValues.h"

#include <cerrno>
#include <utility>

namespace vellmoor {
namespace {

using mac::addressOf;
using mac::failureOf;
using mac::objectOf;
using mac::textOf;

enum class Errors : std::uint8_t { Dropped, Mixed };

struct Run {
    std::int32_t status = -1;
    std::optional<std::string> output; ///< nothing when it is no UTF-8, or the tool did not start
    std::string errorMessage;          ///< why it did not start
};

std::optional<std::string> outputOf(NSData* data) {
    if (data.length == 0) {
        return std::string();
    }
    if ([[NSString alloc] initWithData:data encoding:NSUTF8StringEncoding] == nil) {
        return std::nullopt;
    }
    return std::string(static_cast<const char*>(data.bytes), data.length);
}

NSTask* taskOf(const Path& tool, const std::vector<std::string>& arguments, NSPipe* pipe, Errors errors) {
    NSMutableArray<NSString*>* words = [NSMutableArray arrayWithCapacity:arguments.size()];
    for (const std::string& argument : arguments) {
        NSString* word = objectOf(argument);
        if (word == nil) {
            return nil;
        }
        [words addObject:word];
    }
    NSTask* task = [[NSTask alloc] init];
    task.executableURL = addressOf(tool);
    task.arguments = words;
    task.standardOutput = pipe;
    if (errors == Errors::Mixed) {
        task.standardError = pipe;
    } else {
        task.standardError = NSFileHandle.fileHandleWithNullDevice;
    }
    return task;
}

Run finished(NSTask* task, NSPipe* pipe) {
    Run run;
    NSError* error = nil;
    if (![task launchAndReturnError:&error]) {
        run.errorMessage = failureOf(error, mac::LogCategory::Tools, "Starting a tool").error();
        return run;
    }
    // Before the waiting: a tool that prints more than the pipe holds would never end.
    NSData* data = [pipe.fileHandleForReading readDataToEndOfFileAndReturnError:nullptr];
    [task waitUntilExit];
    run.status = task.terminationStatus;
    run.output = outputOf(data);
    return run;
}

Run runTool(const Path& tool, const std::vector<std::string>& arguments, Errors errors) {
    @autoreleasepool {
        Run run;
        @try {
            NSPipe* pipe = [NSPipe pipe];
            NSTask* task = taskOf(tool, arguments, pipe, errors);
            if (task == nil) {
                run.errorMessage = files::reason(EILSEQ); // an argument that is no UTF-8
                return run;
            }
            return finished(task, pipe);
        } @catch (NSException* exception) {
            run.errorMessage = textOf(exception.reason);
            return run;
        }
    }
}

} // namespace

std::optional<std::string> MacPlatform::commandOutput(const Path& tool,
                                                      const std::vector<std::string>& arguments) const {
    Run run = runTool(tool, arguments, Errors::Dropped);
    return run.status == 0 ? std::move(run.output) : std::nullopt;
}

CommandResult MacPlatform::commandResult(const Path& tool, const std::vector<std::string>& arguments) const {
    Run run = runTool(tool, arguments, Errors::Mixed);
    return {.status = run.status,
            .output = std::move(run.output).value_or(std::string()),
            .errorMessage = std::move(run.errorMessage)};
}

} // namespace vellmoor
