#pragma once

#include "processes/LinuxProcesses.h"
#include "processes/MemoryText.h"
#include "scan/EngineContext.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vellmoor {

/// Finds the application that a process belongs to. Lives for one list of samples.
class ProcessApplications {
public:
    ProcessApplications() = default;
    ProcessApplications(const ProcessApplications&) = delete;
    ProcessApplications& operator=(const ProcessApplications&) = delete;
    virtual ~ProcessApplications() = default;

    /// Equal for the processes of one application; nothing for a process that is not listed.
    virtual std::optional<std::string> keyOf(const ProcessMemorySample& sample) = 0;
    /// The record of an application of which `sample` is a process; its figures are left empty.
    virtual MemoryApp describe(const std::string& key, const ProcessMemorySample& sample) = 0;
};

/// By running applications and bundle paths (macOS).
std::unique_ptr<ProcessApplications> bundleApplications(const EngineContext& context);
/// By control groups, variables, desktop entries and parents (Linux). `processes` and `samples` outlive it.
std::unique_ptr<ProcessApplications> entryApplications(EngineContext& context, const LinuxProcesses& processes,
                                                       const std::vector<ProcessMemorySample>& samples);

} // namespace vellmoor
