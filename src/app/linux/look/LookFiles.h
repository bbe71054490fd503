// What the files of GTK and KDE say of the desktop's look, for desktops without a settings portal.
#pragma once

#include "DesktopLook.h"

#include <QStringList>

#include <filesystem>

namespace vellmoor {

/// Read from `config` ($XDG_CONFIG_HOME): kdeglobals, gtk-4.0/settings.ini, gtk-3.0/settings.ini. What none of them
/// says is as DesktopLook has it.
DesktopLook lookOfFiles(const std::filesystem::path& config);

/// The files and folders whose change may change that; only those that exist.
QStringList watchedLookFiles(const std::filesystem::path& config);

} // namespace vellmoor
