// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// Calls every method in all of its forms, with the proxy that gdbus-codegen makes.

#include "proxy.h"

static gboolean call_all(InstallationHandler *handler, GError **error)
{
    const gchar *files[] = {"/no.rpm", NULL};
    const gchar *names[] = {NULL};
    return installation_handler_call_install_files_sync(handler, files, NULL, error)
            && installation_handler_call_install_files_with_sdk_mode_sync(handler, files, FALSE, NULL, error)
            && installation_handler_call_install_files_full_sync(handler, files, FALSE, TRUE, NULL, error)
            && installation_handler_call_remove_packages_sync(handler, names, NULL, error)
            && installation_handler_call_remove_packages_full_sync(handler, names, TRUE, NULL, error)
            && installation_handler_call_remove_package_by_desktop_file_sync(handler, "/no.desktop", NULL, error);
}

int main(void)
{
    g_autoptr(GError) error = NULL;
    g_autoptr(InstallationHandler) handler = installation_handler_proxy_new_for_bus_sync(
            G_BUS_TYPE_SESSION, G_DBUS_PROXY_FLAGS_NONE, "org.velmoraos.installationhandler",
            "/org/velmoraos/installationhandler", NULL, &error);
    if (handler && call_all(handler, &error)) {
        return 0;
    }
    g_printerr("%s\n", error->message);
    return 1;
}
