// The system's log, as those read it to whom nothing private is shown.
#include "DarwinAbi.h"
#include "DarwinSystem.h"

#include <cstdarg>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vellmoor::test {
namespace {

std::mutex mutex;
std::vector<std::string> logged;

} // namespace

std::vector<std::string> takeLog() {
    const std::lock_guard lock(mutex);
    return std::exchange(logged, {});
}

} // namespace vellmoor::test

using namespace vellmoor::test;

struct darwin_log {
    std::string name;
};

darwin_log_t darwin_log_create(const char* subsystem, const char* category) {
    return new darwin_log{std::string(subsystem) + "/" + category}; // as there: it is never given back
}

// Texts ("s") and numbers ("ld") only, each with its kind of openness.
void darwin_log_error(darwin_log_t log, const char* format, ...) {
    std::string line = log->name + ": ";
    va_list arguments;
    va_start(arguments, format);
    for (std::string_view rest = format; !rest.empty();) {
        if (!rest.starts_with("%{")) {
            line += rest.front();
            rest.remove_prefix(1);
            continue;
        }
        const bool isPublic = rest.starts_with("%{public}");
        rest.remove_prefix(rest.find('}') + 1);
        const bool isText = rest.starts_with("s");
        const std::string value = isText ? va_arg(arguments, const char*) : std::to_string(va_arg(arguments, long));
        line += isPublic ? value : "<private>";
        rest.remove_prefix(isText ? 1 : 2);
    }
    va_end(arguments);
    const std::lock_guard lock(mutex);
    logged.push_back(line);
}
