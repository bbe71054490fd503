#include "desktop/AppNames.h"
#include "processes/ProcessApplications.h"

#include <map>

namespace vellmoor {
namespace {

class BundleApplications : public ProcessApplications {
public:
    explicit BundleApplications(const EngineContext& context) : context_(context) {
        for (const RunningApplication& application : context.platform().runningApplications()) {
            if (!application.bundlePath.empty()) {
                const std::string path = context.platform().standardized(application.bundlePath).native();
                pathByPid_.emplace(application.pid, path);
                nameByPath_.emplace(path, application.name);
            }
        }
    }

    std::optional<std::string> keyOf(const ProcessMemorySample& sample) override {
        const std::optional<std::string> path = bundleOf(sample);
        return path && isListed(*path) ? path : std::nullopt;
    }

    MemoryApp describe(const std::string& key, const ProcessMemorySample&) override {
        const auto running = nameByPath_.find(key);
        const std::optional<BundleInfo> bundle = context_.platform().bundleInfo(key);
        MemoryApp app;
        app.id = key;
        app.path = key;
        app.isActive = running != nameByPath_.end();
        app.bundleIdentifier = bundle ? bundle->identifier : std::nullopt;
        app.name = app.isActive ? running->second : std::string();
        for (const auto& name : {bundle ? bundle->displayName : std::nullopt, bundle ? bundle->name : std::nullopt}) {
            app.name = app.name.empty() ? name.value_or("") : app.name;
        }
        app.name = app.name.empty() ? Path(key).stem().string() : app.name;
        return app;
    }

private:
    [[nodiscard]] std::optional<std::string> bundleOf(const ProcessMemorySample& sample) const {
        if (const auto running = pathByPid_.find(sample.pid); running != pathByPid_.end()) {
            return running->second;
        }
        const std::size_t end = sample.command.find(".app/");
        if (end == std::string::npos) {
            return std::nullopt;
        }
        const std::string_view bundle =
            std::string_view(sample.command).substr(0, end + std::string_view(".app").size());
        return context_.platform().standardized(bundle).native();
    }

    /// ps writes what is not ASCII as "M-" and control characters as "^": no path of a real folder.
    [[nodiscard]] bool isListed(const std::string& path) const {
        return path.find("M-") == std::string::npos && path.find('^') == std::string::npos &&
               !isProtectedSystemAppPath(context_, path);
    }

    const EngineContext& context_;
    std::map<std::int32_t, std::string> pathByPid_;
    std::map<std::string, std::string> nameByPath_;
};

} // namespace

std::unique_ptr<ProcessApplications> bundleApplications(const EngineContext& context) {
    return std::make_unique<BundleApplications>(context);
}

} // namespace vellmoor
