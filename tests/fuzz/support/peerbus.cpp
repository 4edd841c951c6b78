// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// First, because its headers use names that Qt takes for keywords.
#include <gio/gio.h>

#include "fuzzing.h"
#include "peerbus.h"
#include "texts.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDir>
#include <QHash>
#include <QMutex>
#include <QMutexLocker>

#include <atomic>
#include <thread>
#include <utility>

namespace {

constexpr const char *PeerName = ":1.1";

// D-Bus allows more, but a message that goes beyond its limits would end the connection.
constexpr int LongestSignature = 30;
constexpr int DeepestVariant = 8;

// GLib knows types that D-Bus lacks: structures without members, and entries outside of maps.
bool isSignature(const QByteArray &text)
{
    if (text.size() > LongestSignature || !g_variant_is_signature(text.constData()) || text.contains("()")) {
        return false;
    }
    for (int i = 0; i < text.size(); ++i) {
        if (text[i] == '{' && (i == 0 || text[i - 1] != 'a')) {
            return false;
        }
    }
    return true;
}

bool hasOnlySignatures(GVariant *value, int depth = 0)
{
    const bool isVariant = g_variant_is_of_type(value, G_VARIANT_TYPE_VARIANT);
    if (depth > DeepestVariant) {
        return false;
    }
    if (!g_variant_is_container(value)) {
        return true;
    }
    for (gsize i = 0; i < g_variant_n_children(value); ++i) {
        const Arguments child(g_variant_get_child_value(value, i));
        if ((isVariant && !isSignature(g_variant_get_type_string(child.get())))
            || !hasOnlySignatures(child.get(), depth + isVariant)) {
            return false;
        }
    }
    return true;
}

// A message without arguments has no body.
void setArguments(GDBusMessage *message, GVariant *arguments)
{
    if (arguments && g_variant_n_children(arguments) > 0) {
        g_dbus_message_set_body(message, arguments);
    }
}

}

void ReleaseValue::operator()(GVariant *value) const
{
    g_variant_unref(value);
}

Arguments argumentsOf(const char *text)
{
    return Arguments(g_variant_parse(nullptr, text, nullptr, nullptr, nullptr));
}

Arguments argumentsIn(const QByteArray &input)
{
    const int end = input.indexOf('\n');
    const QByteArray signature = input.left(qMax(end, 0));
    if (end == -1 || signature.contains('\0') || !isSignature(signature)) {
        return nullptr;
    }
    const QByteArray type = '(' + signature + ')';
    g_autoptr(GBytes) data = g_bytes_new(input.constData() + end + 1, gsize(input.size() - end - 1));
    const Arguments raw(g_variant_ref_sink(g_variant_new_from_bytes(G_VARIANT_TYPE(type.constData()), data, FALSE)));
    Arguments arguments(g_variant_get_normal_form(raw.get()));
    return hasOnlySignatures(arguments.get()) ? std::move(arguments) : nullptr;
}

// The bus and the peer at its one connection.
class PeerBus::Peer
{
public:
    Peer();

    void setAnswer(const QString &member, const Arguments &arguments, bool isError);
    void note(const QString &member);
    QStringList takeCalls(const QString &member);
    void emitSignal(const char *path, const char *interface, const char *member, const Arguments &arguments);

    const char *address() const { return g_dbus_server_get_client_address(m_server); }

private:
    struct Answer
    {
        std::shared_ptr<GVariant> arguments;
        bool isError;
    };

    static gboolean accept(GDBusServer *server, GDBusConnection *connection, gpointer self);
    static GDBusMessage *filter(GDBusConnection *connection, GDBusMessage *message, gboolean incoming, gpointer self);
    void receive(GDBusMessage *call);
    bool send(GDBusMessage *message);

    GDBusServer *m_server = nullptr;
    std::atomic<GDBusConnection *> m_connection = nullptr;
    QMutex m_mutex;
    QHash<QString, Answer> m_answers;
    QHash<QString, QStringList> m_calls;
};

PeerBus::Peer::Peer()
{
    // The bus itself.
    setAnswer("Hello"_s, argumentsOf("(':1.0',)"), false);
    setAnswer("GetNameOwner"_s, argumentsOf("(':1.1',)"), false);
    for (const QString &member : {"AddMatch"_s, "RemoveMatch"_s, "Ping"_s}) {
        setAnswer(member, argumentsOf("()"), false);
    }
    setAnswer("Introspect"_s, argumentsOf("('<node/>',)"), false);

    g_autoptr(GError) error = nullptr;
    g_autofree gchar *guid = g_dbus_generate_guid();
    GMainContext *context = g_main_context_new();
    g_main_context_push_thread_default(context);
    // The process may end in any way. Its folder for temporary files goes with the socket then.
    const QString address = "unix:tmpdir="_s + QDir::tempPath();
    m_server = g_dbus_server_new_sync(qPrintable(address), G_DBUS_SERVER_FLAGS_NONE, guid, nullptr, nullptr, &error);
    if (!m_server) {
        qFatal("No bus: %s", error->message);
    }
    g_signal_connect(m_server, "new-connection", G_CALLBACK(accept), this);
    g_dbus_server_start(m_server);
    g_main_context_pop_thread_default(context);
    std::thread([context] {
        while (true) {
            g_main_context_iteration(context, TRUE);
        }
    }).detach();
}

void PeerBus::Peer::setAnswer(const QString &member, const Arguments &arguments, bool isError)
{
    const QMutexLocker locker(&m_mutex);
    m_answers.insert(member, {{g_variant_ref(arguments.get()), g_variant_unref}, isError});
}

void PeerBus::Peer::note(const QString &member)
{
    const QMutexLocker locker(&m_mutex);
    m_calls.insert(member, {});
}

QStringList PeerBus::Peer::takeCalls(const QString &member)
{
    const QMutexLocker locker(&m_mutex);
    return std::exchange(m_calls[member], {});
}

gboolean PeerBus::Peer::accept(GDBusServer *, GDBusConnection *connection, gpointer self)
{
    auto *peer = static_cast<Peer *>(self);
    peer->m_connection = static_cast<GDBusConnection *>(g_object_ref(connection));
    g_dbus_connection_add_filter(connection, filter, self, nullptr);
    return TRUE;
}

GDBusMessage *PeerBus::Peer::filter(GDBusConnection *, GDBusMessage *message, gboolean incoming, gpointer self)
{
    if (!incoming || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL) {
        return message;
    }
    static_cast<Peer *>(self)->receive(message);
    g_object_unref(message);
    return nullptr;
}

void PeerBus::Peer::receive(GDBusMessage *call)
{
    const QMutexLocker locker(&m_mutex);
    const QString member = QString::fromUtf8(g_dbus_message_get_member(call));
    const auto calls = m_calls.find(member);
    if (calls != m_calls.end()) {
        calls->append(QString::fromUtf8(g_dbus_message_get_arg0(call)));
    }

    const Answer answer = m_answers.value(member);
    const bool isError = !answer.arguments || answer.isError;
    g_autoptr(GDBusMessage) reply = isError
            ? g_dbus_message_new_method_error_literal(call, "org.freedesktop.DBus.Error.Failed", "")
            : g_dbus_message_new_method_reply(call);
    setArguments(reply, answer.arguments.get());
    // The caller is gone when the program ends.
    send(reply);
}

void PeerBus::Peer::emitSignal(const char *path, const char *interface, const char *member, const Arguments &arguments)
{
    g_autoptr(GDBusMessage) message = g_dbus_message_new_signal(path, interface, member);
    setArguments(message, arguments.get());
    require(send(message));
}

bool PeerBus::Peer::send(GDBusMessage *message)
{
    g_dbus_message_set_sender(message, PeerName);
    return g_dbus_connection_send_message(m_connection, message, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
}

PeerBus &PeerBus::instance()
{
    static PeerBus bus;
    return bus;
}

PeerBus::PeerBus()
    : m_peer(new Peer)
{
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", m_peer->address());
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    QDBusConnection::systemBus();
    // Qt holds a new connection's signals back until the event loop has run.
    QCoreApplication::processEvents();
}

void PeerBus::answer(const QString &member, const Arguments &arguments)
{
    m_peer->setAnswer(member, arguments, false);
}

void PeerBus::answerWithError(const QString &member, const Arguments &arguments)
{
    m_peer->setAnswer(member, arguments, true);
}

void PeerBus::note(const QString &member)
{
    m_peer->note(member);
}

QStringList PeerBus::takeCalls(const QString &member)
{
    return m_peer->takeCalls(member);
}

void PeerBus::emitSignal(const char *path, const char *interface, const char *member, const Arguments &arguments)
{
    m_peer->emitSignal(path, interface, member, arguments);
}

void PeerBus::settle() const
{
    const QDBusMessage ping =
            QDBusMessage::createMethodCall("org.freedesktop.DBus"_s, "/"_s, "org.freedesktop.DBus.Peer"_s, "Ping"_s);
    require(QDBusConnection::systemBus().call(ping).type() == QDBusMessage::ReplyMessage);
    // Qt announces an answer that came before its watcher was made in two steps.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}
