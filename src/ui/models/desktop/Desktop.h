#pragma once

#include "DesktopLook.h"
#include "found/LargeFileFilters.h"

#include <QImage>
#include <QString>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vellmoor {

/// What the window asks of the desktop around it. An action that the desktop could not do is told to the
/// listener, later for those that another program answers.
class Desktop {
public:
    Desktop() = default;
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    virtual ~Desktop() = default;

    /// Shows a path, selected, in the file manager.
    virtual void reveal(const std::filesystem::path& path) = 0;
    virtual void openFolder(const std::filesystem::path& folder) = 0;
    virtual void openHome() = 0;
    virtual void openTrash() = 0;
    virtual void openSystemMonitor() = 0;
    /// The desktop's own settings of what starts at login.
    virtual void openLoginItemsSettings() = 0;
    /// Where the user can give Vellmoor access to folders that it may not read.
    virtual void openPermissionSettings() = 0;
    /// Tells the user, who looks elsewhere, that something is over; `opened` is called on a click. Nothing where the
    /// desktop has no such notes.
    // NOLINTNEXTLINE(performance-unnecessary-value-param): whoever overrides it keeps the callback
    virtual void notify(const QString& /*title*/, const QString& /*text*/, std::function<void()> /*opened*/) {}
    /// Which kinds of files the large-file list tells apart.
    [[nodiscard]] virtual const FileKinds& fileKinds() const = 0;
    /// The name of the home's volume: a text key or a plain name.
    [[nodiscard]] virtual std::string volumeLabel() const = 0;
    [[nodiscard]] virtual std::filesystem::path homeFolder() const = 0;
    /// The icon of an application (a bundle or desktop entry), `pixels` wide; null when none can be read.
    [[nodiscard]] virtual QImage applicationIcon(const std::filesystem::path& application, int pixels) = 0;
    /// Whether there is such an icon; without drawing it where that can be told.
    [[nodiscard]] virtual bool hasApplicationIcon(const std::filesystem::path& application);
    /// Whether applicationIcon() and symbol() may be called on any thread.
    [[nodiscard]] virtual bool drawsOnAnyThread() const { return false; }
    /// The desktop's own picture of a symbol, black on nothing, `pixels` wide and high; null when it has none: then
    /// the embedded one is drawn.
    [[nodiscard]] virtual QImage symbol(const QString& /*name*/, int /*pixels*/) { return {}; }
    /// How programs are to look now.
    [[nodiscard]] virtual DesktopLook look() const = 0;
    /// Whether the program runs as root: it then looks at root's home and not at that of the person at the screen.
    [[nodiscard]] virtual bool runsAsRoot() const { return false; }
    /// What the window remembers from one start to the next, by name; nothing unless the desktop keeps it.
    [[nodiscard]] virtual std::optional<std::string> remembered(std::string_view /*name*/) const { return {}; }
    virtual void remember(std::string_view /*name*/, const std::string& /*value*/) {}

    /// `changed` is called whenever look() may answer something else.
    void whenLookChanges(std::function<void()> changed) { lookChanged_ = std::move(changed); }
    /// `failed` is called with the key of a text that says what did not work.
    void whenActionFails(std::function<void(std::string_view key)> failed) { actionFailed_ = std::move(failed); }

protected:
    void tellLookChanged() const {
        if (lookChanged_) {
            lookChanged_();
        }
    }
    void tellFailure(std::string_view key) const {
        if (actionFailed_) {
            actionFailed_(key);
        }
    }

private:
    std::function<void()> lookChanged_;
    std::function<void(std::string_view)> actionFailed_;
};

} // namespace vellmoor
