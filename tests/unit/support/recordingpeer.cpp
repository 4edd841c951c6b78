// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// First, because its headers use names that Qt takes for keywords.
#include <gio/gio.h>

#include "journal.h"
#include "recordingpeer.h"
#include "texts.h"

#include <QHash>
#include <QSet>

namespace {

struct Release
{
    void operator()(GDBusMessage *message) const { g_object_unref(message); }
    void operator()(GVariant *value) const { g_variant_unref(value); }
    void operator()(gchar *text) const { g_free(text); }
};

using MessagePointer = std::unique_ptr<GDBusMessage, Release>;
using ValuePointer = std::unique_ptr<GVariant, Release>;
using TextPointer = std::unique_ptr<gchar, Release>;

[[noreturn]] void fail(const char *what, const GError *error)
{
    qFatal("%s: %s", what, error->message);
}

ValuePointer parse(const QByteArray &text)
{
    GError *error = nullptr;
    ValuePointer value(g_variant_parse(nullptr, text.constData(), nullptr, nullptr, &error));
    if (!value) {
        fail(text.constData(), error);
    }
    return value;
}

QString describe(GDBusMessage *call)
{
    GVariant *body = g_dbus_message_get_body(call);
    const QString arguments = body ? QString::fromUtf8(TextPointer(g_variant_print(body, TRUE)).get()) : "()"_s;
    return "%1 %2 %3.%4%5"_s.arg(QString::fromUtf8(g_dbus_message_get_destination(call)),
                                 QString::fromUtf8(g_dbus_message_get_path(call)),
                                 QString::fromUtf8(g_dbus_message_get_interface(call)),
                                 QString::fromUtf8(g_dbus_message_get_member(call)), arguments);
}

}

// GLib's own thread may still handle a call while the peer is destroyed, so both of them own the connection.
class RecordingPeer::Connection
{
public:
    Connection(const QString &address, Journal *journal);
    ~Connection();

    void open(const std::shared_ptr<Connection> &self);
    void close();
    void changeName(const QString &name, const char *method, GVariant *arguments);
    void receive(GDBusMessage *call);
    void give(const PeerAnswer &answer, MessagePointer call);

    GDBusConnection *bus() const { return m_bus; }

    QMutex mutex;
    QHash<QString, QList<PeerAnswer>> answers;
    QSet<QString> overlooked;
    std::vector<MessagePointer> held;

private:
    PeerAnswer nextAnswer(const QString &member);
    void send(GDBusMessage *message);

    GDBusConnection *m_bus;
    Journal *m_journal;
    guint m_filter = 0;
};

RecordingPeer::Connection::Connection(const QString &address, Journal *journal)
    : m_journal(journal)
{
    GError *error = nullptr;
    m_bus = g_dbus_connection_new_for_address_sync(
            address.toUtf8().constData(),
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT
                                              | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, &error);
    if (!m_bus) {
        fail("A peer could not join the bus", error);
    }
}

RecordingPeer::Connection::~Connection()
{
    held.clear();
    g_object_unref(m_bus);
}

void RecordingPeer::Connection::open(const std::shared_ptr<Connection> &self)
{
    using Owner = std::shared_ptr<Connection>;
    m_filter = g_dbus_connection_add_filter(
            m_bus,
            [](GDBusConnection *, GDBusMessage *message, gboolean incoming, gpointer owner) -> GDBusMessage * {
                if (!incoming || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL) {
                    return message;
                }
                (*static_cast<Owner *>(owner))->receive(message);
                g_object_unref(message);
                return nullptr;
            },
            new Owner(self), [](gpointer owner) { delete static_cast<Owner *>(owner); });
}

void RecordingPeer::Connection::close()
{
    g_dbus_connection_remove_filter(m_bus, m_filter);
    g_dbus_connection_close_sync(m_bus, nullptr, nullptr);
}

void RecordingPeer::Connection::changeName(const QString &name, const char *method, GVariant *arguments)
{
    GError *error = nullptr;
    const ValuePointer reply(g_dbus_connection_call_sync(m_bus, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                         "org.freedesktop.DBus", method, arguments, nullptr,
                                                         G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &error));
    guint32 result = 0;
    if (!reply) {
        fail(qPrintable(name), error);
    }
    g_variant_get(reply.get(), "(u)", &result);
    if (result != 1) {
        qFatal("%s belongs to another peer", qPrintable(name));
    }
}

void RecordingPeer::Connection::receive(GDBusMessage *call)
{
    MessagePointer kept(static_cast<GDBusMessage *>(g_object_ref(call)));
    const QByteArray interface(g_dbus_message_get_interface(call));
    const QString member = QString::fromUtf8(g_dbus_message_get_member(call));
    if (interface == "org.freedesktop.DBus.Introspectable" || interface == "org.freedesktop.DBus.Peer") {
        give(PeerAnswer::values(member == "Introspect"_s ? "('<node/>',)" : "()"), std::move(kept));
        return;
    }

    QMutexLocker locker(&mutex);
    if (!overlooked.contains(member)) {
        m_journal->add(describe(call));
    }
    const PeerAnswer answer = nextAnswer(member);
    if (answer.kind == PeerAnswer::Kind::Held) {
        held.push_back(std::move(kept));
        return;
    }
    locker.unlock();
    give(answer, std::move(kept));
}

PeerAnswer RecordingPeer::Connection::nextAnswer(const QString &member)
{
    const auto found = answers.find(member);
    if (found == answers.end()) {
        return PeerAnswer::error("org.freedesktop.DBus.Error.UnknownMethod", "This peer knows no such method");
    }
    return found->size() > 1 ? found->takeFirst() : found->constFirst();
}

void RecordingPeer::Connection::give(const PeerAnswer &answer, MessagePointer call)
{
    if (answer.preparation) {
        answer.preparation();
    }
    if (answer.kind == PeerAnswer::Kind::Death) {
        // The synchronous function would wait for this very thread.
        g_dbus_connection_close(m_bus, nullptr, nullptr, nullptr);
    } else if (g_dbus_message_get_flags(call.get()) & G_DBUS_MESSAGE_FLAGS_NO_REPLY_EXPECTED) {
        return;
    } else if (answer.kind == PeerAnswer::Kind::Error) {
        send(MessagePointer(g_dbus_message_new_method_error_literal(call.get(), answer.errorName.constData(),
                                                                    answer.text.constData()))
                     .get());
    } else {
        const MessagePointer reply(g_dbus_message_new_method_reply(call.get()));
        g_dbus_message_set_body(reply.get(), parse(answer.text).get());
        send(reply.get());
    }
}

void RecordingPeer::Connection::send(GDBusMessage *message)
{
    g_dbus_connection_send_message(m_bus, message, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
}

RecordingPeer::RecordingPeer(const QString &address, const QStringList &names, Journal *journal)
    : m_connection(std::make_shared<Connection>(address, journal))
{
    m_connection->open(m_connection);
    for (const QString &name : names) {
        const guint flags = G_BUS_NAME_OWNER_FLAGS_DO_NOT_QUEUE;
        m_connection->changeName(name, "RequestName", g_variant_new("(su)", name.toUtf8().constData(), flags));
    }
}

RecordingPeer::~RecordingPeer()
{
    m_connection->close();
}

void RecordingPeer::giveUp(const QString &name)
{
    m_connection->changeName(name, "ReleaseName", g_variant_new("(s)", name.toUtf8().constData()));
}

void RecordingPeer::answer(const QString &member, const QList<PeerAnswer> &answers)
{
    const QMutexLocker locker(&m_connection->mutex);
    m_connection->answers.insert(member, answers);
}

void RecordingPeer::answer(const QString &member, const PeerAnswer &answer)
{
    this->answer(member, QList<PeerAnswer>{answer});
}

void RecordingPeer::overlook(const QString &member)
{
    const QMutexLocker locker(&m_connection->mutex);
    m_connection->overlooked.insert(member);
}

bool RecordingPeer::answerHeld(const PeerAnswer &answer)
{
    QMutexLocker locker(&m_connection->mutex);
    if (m_connection->held.empty()) {
        return false;
    }
    MessagePointer call = std::move(m_connection->held.front());
    m_connection->held.erase(m_connection->held.begin());
    locker.unlock();
    m_connection->give(answer, std::move(call));
    return true;
}

void RecordingPeer::emitSignal(const QString &path, const QString &interface, const QString &member,
                               const QByteArray &arguments)
{
    GError *error = nullptr;
    if (!g_dbus_connection_emit_signal(m_connection->bus(), nullptr, path.toUtf8().constData(),
                                       interface.toUtf8().constData(), member.toUtf8().constData(),
                                       parse(arguments).get(), &error)) {
        fail("A peer could not emit its signal", error);
    }
}
