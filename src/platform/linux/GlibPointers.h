// GLib's values with an owner. Only sources of this folder include this.
#pragma once

#include <gio/gio.h>

#include <memory>

namespace vellmoor::glib {

template <auto release>
struct Release {
    template <class Value>
    void operator()(Value* value) const {
        release(value);
    }
};

using Text = std::unique_ptr<char, Release<g_free>>;
using TextList = std::unique_ptr<char*, Release<g_strfreev>>;
using ErrorPointer = std::unique_ptr<GError, Release<g_error_free>>;
using KeyFilePointer = std::unique_ptr<GKeyFile, Release<g_key_file_unref>>;
using VariantPointer = std::unique_ptr<GVariant, Release<g_variant_unref>>;

template <class Type>
using Object = std::unique_ptr<Type, Release<g_object_unref>>;

} // namespace vellmoor::glib
