// Prints an activation token of the compositor's, as a panel hands one to what it starts.
#include "xdg-activation-v1.h"

#include <stdio.h>
#include <string.h>
#include <wayland-client.h>

static struct xdg_activation_v1* activation;
static int isDone;

static void added(void* data, struct wl_registry* registry, uint32_t name, const char* interface, uint32_t version) {
    (void)data;
    (void)version;
    if (strcmp(interface, xdg_activation_v1_interface.name) == 0) {
        activation = wl_registry_bind(registry, name, &xdg_activation_v1_interface, 1);
    }
}

static void removed(void* data, struct wl_registry* registry, uint32_t name) {
    (void)data;
    (void)registry;
    (void)name;
}

static void done(void* data, struct xdg_activation_token_v1* object, const char* token) {
    (void)data;
    (void)object;
    puts(token);
    isDone = 1;
}

int main(void) {
    static const struct wl_registry_listener registryListener = {added, removed};
    static const struct xdg_activation_token_v1_listener tokenListener = {done};
    struct wl_display* display = wl_display_connect(NULL);
    if (display == NULL) {
        return 1;
    }
    wl_registry_add_listener(wl_display_get_registry(display), &registryListener, NULL);
    wl_display_roundtrip(display);
    if (activation == NULL) {
        return 1;
    }
    struct xdg_activation_token_v1* token = xdg_activation_v1_get_activation_token(activation);
    xdg_activation_token_v1_add_listener(token, &tokenListener, NULL);
    xdg_activation_token_v1_commit(token);
    while (!isDone && wl_display_dispatch(display) >= 0) {
    }
    return isDone ? 0 : 1;
}
