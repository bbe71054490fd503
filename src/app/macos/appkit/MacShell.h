#pragma once

#include "appkit/NoteCenter.h"
#include "desktop/Shell.h"

namespace vellmoor {

/// The shell by AppKit. It needs the application object. One at a time; when it goes, the status item goes and nothing
/// is handed to the program any more.
class MacShell final : public Shell {
public:
    MacShell() = default;
    ~MacShell() override;
    MacShell(const MacShell&) = delete;
    MacShell& operator=(const MacShell&) = delete;

    void install(ShellHandlers handlers) override;
    void activate() override;
    void bringToFront(std::uintptr_t view) override;
    void setBusy(bool isBusy) override;
    void showNote(const std::string& title, const std::string& text) override;
    void alert(const std::string& title, const std::string& text) override;

private:
    NoteCenter notes_;
};

} // namespace vellmoor
