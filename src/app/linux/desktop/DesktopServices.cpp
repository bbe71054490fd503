#include "desktop/DesktopServices.h"

#include "disk/FolderVariables.h"

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include <memory>

namespace vellmoor {
namespace {

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
};

struct UnrefSchema {
    void operator()(GSettingsSchema* schema) const { g_settings_schema_unref(schema); }
};

struct FreeKeyFile {
    void operator()(GKeyFile* file) const { g_key_file_unref(file); }
};

struct Free {
    void operator()(char* text) const { g_free(text); }
};

/// GNOME and its relatives: org.gnome.desktop.interface enable-animations.
bool gnomeAnimates() {
    GSettingsSchemaSource* source = g_settings_schema_source_get_default();
    if (source == nullptr) {
        return true;
    }
    const std::unique_ptr<GSettingsSchema, UnrefSchema> schema(
        g_settings_schema_source_lookup(source, "org.gnome.desktop.interface", TRUE));
    if (!schema || g_settings_schema_has_key(schema.get(), "enable-animations") == FALSE) {
        return true;
    }
    const std::unique_ptr<GSettings, Unref> settings(g_settings_new_full(schema.get(), nullptr, nullptr));
    return g_settings_get_boolean(settings.get(), "enable-animations") != FALSE;
}

/// KDE: the speed of animations in kdeglobals; 0 switches them off.
bool kdeAnimates() {
    const std::unique_ptr<GKeyFile, FreeKeyFile> file(g_key_file_new());
    const std::unique_ptr<char, Free> path(g_build_filename(g_get_user_config_dir(), "kdeglobals", nullptr));
    if (g_key_file_load_from_file(file.get(), path.get(), G_KEY_FILE_NONE, nullptr) == FALSE) {
        return true;
    }
    GError* missing = nullptr;
    const double factor = g_key_file_get_double(file.get(), "KDE", "AnimationDurationFactor", &missing);
    if (missing != nullptr) {
        g_error_free(missing); // not set: the usual speed
        return true;
    }
    return factor > 0;
}

/// With the environment that the user's session gave to this program.
std::unique_ptr<GAppLaunchContext, Unref> sessionContext(const std::string& startupId) {
    std::unique_ptr<GAppLaunchContext, Unref> context(g_app_launch_context_new());
    for (const auto& [name, value] : originalFolders()) {
        g_app_launch_context_setenv(context.get(), name.c_str(), value.c_str());
    }
    if (!startupId.empty()) {
        for (const char* name : startupVariables) {
            g_app_launch_context_setenv(context.get(), name, startupId.c_str());
        }
    }
    return context;
}

} // namespace

std::string fileUri(const std::filesystem::path& path) {
    const std::unique_ptr<char, Free> uri(g_filename_to_uri(path.c_str(), nullptr, nullptr));
    return uri ? std::string(uri.get()) : std::string();
}

bool launchUri(const std::string& uri, const std::string& startupId) {
    return !uri.empty() &&
           g_app_info_launch_default_for_uri(uri.c_str(), sessionContext(startupId).get(), nullptr) != FALSE;
}

bool launchDesktopEntry(const std::string& identifier, const std::string& startupId) {
    const std::unique_ptr<GDesktopAppInfo, Unref> entry(g_desktop_app_info_new((identifier + ".desktop").c_str()));
    return entry &&
           g_app_info_launch(G_APP_INFO(entry.get()), nullptr, sessionContext(startupId).get(), nullptr) != FALSE;
}

bool desktopAnimates() {
    return gnomeAnimates() && kdeAnimates();
}

} // namespace vellmoor
