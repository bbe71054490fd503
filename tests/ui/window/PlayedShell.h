#pragma once

#include "desktop/Shell.h"

#include <string>
#include <utility>
#include <vector>

namespace vellmoor {

/// A shell that remembers what it was asked for.
class PlayedShell final : public Shell {
public:
    void install(ShellHandlers taken) override { handlers = std::move(taken); }
    void activate() override { calls.emplace_back("activate"); }
    void bringToFront(std::uintptr_t view) override { calls.emplace_back(view != 0 ? "front" : "front of nothing"); }
    void setBusy(bool isBusy) override { calls.emplace_back(isBusy ? "busy" : "idle"); }
    void showNote(const std::string& title, const std::string& text) override { notes.push_back(title + ": " + text); }
    void alert(const std::string& title, const std::string& text) override { alerts.push_back(title + ": " + text); }

    ShellHandlers handlers;
    std::vector<std::string> calls;
    std::vector<std::string> notes;
    std::vector<std::string> alerts;
};

} // namespace vellmoor
