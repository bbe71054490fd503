#pragma once

#include "LargeFileFilters.h"

#include <QImage>
#include <QString>

#include <filesystem>
#include <string>

namespace vellmoor {

/// What the window asks of the desktop around it. Actions that the desktop cannot do are passed over in silence.
class Desktop {
public:
    Desktop() = default;
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    virtual ~Desktop() = default;

    /// Shows a path, selected, in the file manager.
    virtual void reveal(const std::filesystem::path& path) = 0;
    virtual void openHome() = 0;
    virtual void openTrash() = 0;
    virtual void openSystemMonitor() = 0;
    /// The desktop's own settings of what starts at login.
    virtual void openLoginItemsSettings() = 0;
    /// Where the user can give Vellmoor access to folders that it may not read.
    virtual void openPermissionSettings() = 0;
    /// Which kinds of files the large-file list tells apart.
    [[nodiscard]] virtual const FileKinds& fileKinds() const = 0;
    /// The name of the home's volume: a text key or a plain name.
    [[nodiscard]] virtual std::string volumeLabel() const = 0;
    [[nodiscard]] virtual std::filesystem::path homeFolder() const = 0;
    /// The icon of an application (a bundle or desktop entry), `pixels` wide; null when none can be read.
    [[nodiscard]] virtual QImage applicationIcon(const std::filesystem::path& application, int pixels) = 0;
    /// Whether there is such an icon; without drawing it where that can be told.
    [[nodiscard]] virtual bool hasApplicationIcon(const std::filesystem::path& application);
    /// Whether applicationIcon() may be called on any thread, one at a time.
    [[nodiscard]] virtual bool drawsOnAnyThread() const { return false; }
    /// The desktop's own picture of a symbol, black on nothing, `pixels` wide and high; null when it has none: then
    /// the embedded one is drawn.
    [[nodiscard]] virtual QImage symbol(const QString& /*name*/, int /*pixels*/) { return {}; }
    /// Whether the desktop asks for less movement.
    [[nodiscard]] virtual bool prefersReducedMotion() const = 0;
    /// Whether the program runs as root: it then looks at root's home and not at that of the person at the screen.
    [[nodiscard]] virtual bool runsAsRoot() const { return false; }
    /// The size of interface text for users who asked for nothing else; more is a wish for larger text.
    [[nodiscard]] virtual double usualTextPoints() const { return 11; } // desktops here have 9 to 11
};

} // namespace vellmoor
