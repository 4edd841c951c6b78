// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "glibproxy.h"

typedef struct
{
    GMainLoop *loop;
    guint outcomes;
    gboolean replied;
    gboolean failed;
} Request;

/* An error that ends the request. Nothing counts any more after its end. */
static void abandon(Request *request, const gchar *error_string)
{
    if (g_main_loop_is_running(request->loop)) {
        g_printerr("%s\n", error_string);
        request->failed = TRUE;
        g_main_loop_quit(request->loop);
    }
}

static void on_outcome(InstallationHandler *handler G_GNUC_UNUSED, gboolean success, const gchar *error_string,
                       Request *request)
{
    if (!g_main_loop_is_running(request->loop)) {
        return;
    }
    if (!success) {
        g_printerr("%s\n", error_string);
        request->failed = TRUE;
    }
    if (--request->outcomes == 0) {
        g_main_loop_quit(request->loop);
    }
}

static void check_owner(GDBusProxy *handler, GParamSpec *property G_GNUC_UNUSED, Request *request)
{
    g_autofree gchar *owner = g_dbus_proxy_get_name_owner(handler);
    if (request->replied && !owner) {
        abandon(request, "The service has ended.");
    }
}

/* The reply of every method is empty. */
static void on_reply(GObject *object, GAsyncResult *result, gpointer data)
{
    GDBusProxy *handler = G_DBUS_PROXY(object);
    Request *request = data;
    g_autoptr(GError) error = NULL;
    g_autoptr(GVariant) reply = g_dbus_proxy_call_finish(handler, result, &error);
    if (!reply) {
        abandon(request, error->message);
    }
    request->replied = TRUE;
    check_owner(handler, NULL, request);
}

int main(int argc, char **argv)
{
    const gboolean installs = argc > 2 && g_str_equal(argv[1], "install");
    if (!installs && !(argc > 2 && g_str_equal(argv[1], "remove"))) {
        g_printerr("usage: glibclient install FILE... | remove NAME...\n");
        return 2;
    }

    g_autoptr(GError) error = NULL;
    g_autoptr(InstallationHandler) handler = installation_handler_proxy_new_for_bus_sync(
            G_BUS_TYPE_SESSION,
            G_DBUS_PROXY_FLAGS_DO_NOT_LOAD_PROPERTIES | G_DBUS_PROXY_FLAGS_DO_NOT_AUTO_START_AT_CONSTRUCTION,
            "org.velmoraos.installationhandler", "/org/velmoraos/installationhandler", NULL, &error);
    if (!handler) {
        g_printerr("%s\n", error->message);
        return 1;
    }

    g_autoptr(GMainLoop) loop = g_main_loop_new(NULL, FALSE);
    Request request = {.loop = loop, .outcomes = installs ? 1 : (guint)argc - 2};
    g_signal_connect(handler, installs ? "install-finished" : "removal-finished", G_CALLBACK(on_outcome), &request);
    g_signal_connect(handler, "notify::g-name-owner", G_CALLBACK(check_owner), &request);

    /* Removals may reply late. If the service ends before its reply, the bus answers with an error. */
    const gchar *const *names = (const gchar *const *)argv + 2;
    if (installs) {
        installation_handler_call_install_files(handler, names, G_DBUS_CALL_FLAGS_NONE, G_MAXINT, NULL, on_reply,
                                                &request);
    } else {
        installation_handler_call_remove_packages(handler, names, G_DBUS_CALL_FLAGS_NONE, G_MAXINT, NULL, on_reply,
                                                  &request);
    }
    g_main_loop_run(loop);
    if (!request.failed) {
        g_print("Done.\n");
    }
    return request.failed;
}
