// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// First, because its headers use names that Qt takes for keywords.
#include <gio/gio.h>

#include "fuzzing.h"
#include "peerbus.h"
#include "texts.h"
#include "zarnpackage.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>

namespace {

bool isRecord(GVariant *arguments)
{
    const QByteArray type(g_variant_get_type_string(arguments));
    return type.startsWith("(a{ss}");
}

/** The record by GLib: of entries with the same key the last one counts. */
ZarnPackage recordIn(GVariant *arguments)
{
    const Arguments map(g_variant_get_child_value(arguments, 0));
    ZarnPackage record;
    for (gsize i = 0; i < g_variant_n_children(map.get()); ++i) {
        const char *key = nullptr;
        const char *value = nullptr;
        g_variant_get_child(map.get(), i, "{&s&s}", &key, &value);
        record.insert(QString::fromUtf8(key), QString::fromUtf8(value));
    }
    return record;
}

}

int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static const QCoreApplication application(*argc, *argv);
    QuietLog::install();
    PeerBus::instance();
    registerZarnPackage();
    return 0;
}

/** The package manager's answer to "GetPackage". */
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const Arguments arguments = argumentsIn(bytes(data, size));
    if (!arguments) {
        return -1;
    }
    PeerBus::instance().answer("GetPackage"_s, arguments);
    QDBusMessage call =
            QDBusMessage::createMethodCall("ru.quon.ZARN"_s, "/ru/quon/ZARN"_s, "ru.quon.ZARN"_s, "GetPackage"_s);
    call << "name"_s;
    const QDBusReply<ZarnPackage> reply = QDBusConnection::systemBus().call(call);
    require(reply.isValid() == isRecord(arguments.get()));
    require(!reply.isValid() || reply.value() == recordIn(arguments.get()));
    return 0;
}
