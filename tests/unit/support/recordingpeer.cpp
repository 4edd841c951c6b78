// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// First, because its headers use names that Qt takes for keywords.
#include <gio/gio.h>

#include "recordingpeer.h"

#include "journal.h"

#include <QHash>
#include <QMutex>
#include <QMutexLocker>
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

QString argumentsOf(GDBusMessage *message)
{
    GVariant *body = g_dbus_message_get_body(message);
    return body ? QString::fromUtf8(TextPointer(g_variant_print(body, TRUE)).get()) : QStringLiteral("()");
}

QString describe(GDBusMessage *call)
{
    return QStringLiteral("%1 %2 %3.%4%5")
            .arg(QString::fromUtf8(g_dbus_message_get_destination(call)),
                 QString::fromUtf8(g_dbus_message_get_path(call)),
                 QString::fromUtf8(g_dbus_message_get_interface(call)),
                 QString::fromUtf8(g_dbus_message_get_member(call)), argumentsOf(call));
}

}

// GLib's own thread may still be at work on a call when the peer goes: both
// hold the post office.
class RecordingPeer::Post
{
public:
    Post(const QString &address, Journal *journal);
    ~Post();

    void open(const std::shared_ptr<Post> &self);
    void close();
    void own(const QString &name);
    void giveUp(const QString &name);
    void receive(GDBusMessage *call);
    void give(const PeerAnswer &answer, MessagePointer call);

    GDBusConnection *connection() const { return m_connection; }

    QMutex mutex;
    QHash<QString, QList<PeerAnswer>> answers;
    QSet<QString> overlooked;
    std::vector<MessagePointer> held;

private:
    void changeName(const QString &name, const char *method, GVariant *arguments);
    PeerAnswer nextAnswer(const QString &member);
    void send(GDBusMessage *message);

    GDBusConnection *m_connection;
    Journal *m_journal;
    guint m_filter = 0;
};

namespace {

bool isPlumbing(GDBusMessage *call)
{
    const QByteArray interface(g_dbus_message_get_interface(call));
    return interface == "org.freedesktop.DBus.Introspectable" || interface == "org.freedesktop.DBus.Peer";
}

PeerAnswer plumbingAnswer(GDBusMessage *call)
{
    const bool introspection = qstrcmp(g_dbus_message_get_member(call), "Introspect") == 0;
    return PeerAnswer::values(introspection ? QByteArrayLiteral("('<node/>',)") : QByteArrayLiteral("()"));
}

}

RecordingPeer::Post::Post(const QString &address, Journal *journal)
    : m_journal(journal)
{
    GError *error = nullptr;
    m_connection = g_dbus_connection_new_for_address_sync(
            address.toUtf8().constData(),
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT
                                              | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, &error);
    if (!m_connection) {
        fail("A peer could not join the bus", error);
    }
}

RecordingPeer::Post::~Post()
{
    held.clear();
    g_object_unref(m_connection);
}

void RecordingPeer::Post::open(const std::shared_ptr<Post> &self)
{
    m_filter = g_dbus_connection_add_filter(
            m_connection,
            [](GDBusConnection *, GDBusMessage *message, gboolean incoming, gpointer post) -> GDBusMessage * {
                if (!incoming || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL) {
                    return message;
                }
                (*static_cast<std::shared_ptr<Post> *>(post))->receive(message);
                g_object_unref(message);
                return nullptr;
            },
            new std::shared_ptr<Post>(self), [](gpointer post) { delete static_cast<std::shared_ptr<Post> *>(post); });
}

void RecordingPeer::Post::close()
{
    g_dbus_connection_remove_filter(m_connection, m_filter);
    g_dbus_connection_close_sync(m_connection, nullptr, nullptr);
}

void RecordingPeer::Post::own(const QString &name)
{
    const guint flags = G_BUS_NAME_OWNER_FLAGS_DO_NOT_QUEUE;
    changeName(name, "RequestName", g_variant_new("(su)", name.toUtf8().constData(), flags));
}

void RecordingPeer::Post::giveUp(const QString &name)
{
    changeName(name, "ReleaseName", g_variant_new("(s)", name.toUtf8().constData()));
}

void RecordingPeer::Post::changeName(const QString &name, const char *method, GVariant *arguments)
{
    GError *error = nullptr;
    const ValuePointer reply(g_dbus_connection_call_sync(m_connection, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                         "org.freedesktop.DBus", method, arguments, nullptr,
                                                         G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &error));
    guint32 result = 0;
    if (!reply) {
        fail(qPrintable(name), error);
    }
    g_variant_get(reply.get(), "(u)", &result);
    if (result != 1) {
        qFatal("%s belongs to somebody else", qPrintable(name));
    }
}

void RecordingPeer::Post::receive(GDBusMessage *call)
{
    MessagePointer kept(static_cast<GDBusMessage *>(g_object_ref(call)));
    if (isPlumbing(call)) {
        give(plumbingAnswer(call), std::move(kept));
        return;
    }

    const QString member = QString::fromUtf8(g_dbus_message_get_member(call));
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

PeerAnswer RecordingPeer::Post::nextAnswer(const QString &member)
{
    const auto found = answers.find(member);
    if (found == answers.end()) {
        return PeerAnswer::error(QByteArrayLiteral("org.freedesktop.DBus.Error.UnknownMethod"),
                                 QByteArrayLiteral("This peer knows no such method"));
    }
    return found->size() > 1 ? found->takeFirst() : found->constFirst();
}

void RecordingPeer::Post::give(const PeerAnswer &answer, MessagePointer call)
{
    if (answer.preparation) {
        answer.preparation();
    }
    if (answer.kind == PeerAnswer::Kind::Death) {
        // Waiting for it would be waiting for this very thread.
        g_dbus_connection_close(m_connection, nullptr, nullptr, nullptr);
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

void RecordingPeer::Post::send(GDBusMessage *message)
{
    g_dbus_connection_send_message(m_connection, message, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
}

RecordingPeer::RecordingPeer(const QString &address, const QStringList &names, Journal *journal)
    : m_post(std::make_shared<Post>(address, journal))
{
    m_post->open(m_post);
    for (const QString &name : names) {
        m_post->own(name);
    }
}

RecordingPeer::~RecordingPeer()
{
    m_post->close();
}

void RecordingPeer::giveUp(const QString &name)
{
    m_post->giveUp(name);
}

void RecordingPeer::answer(const QString &member, const QList<PeerAnswer> &answers)
{
    const QMutexLocker locker(&m_post->mutex);
    m_post->answers.insert(member, answers);
}

void RecordingPeer::answer(const QString &member, const PeerAnswer &answer)
{
    this->answer(member, QList<PeerAnswer>{answer});
}

void RecordingPeer::overlook(const QString &member)
{
    const QMutexLocker locker(&m_post->mutex);
    m_post->overlooked.insert(member);
}

bool RecordingPeer::answerHeld(const PeerAnswer &answer)
{
    QMutexLocker locker(&m_post->mutex);
    if (m_post->held.empty()) {
        return false;
    }
    MessagePointer call = std::move(m_post->held.front());
    m_post->held.erase(m_post->held.begin());
    locker.unlock();
    m_post->give(answer, std::move(call));
    return true;
}

void RecordingPeer::emitSignal(const QString &path, const QString &interface, const QString &member,
                               const QByteArray &arguments)
{
    GError *error = nullptr;
    if (!g_dbus_connection_emit_signal(m_post->connection(), nullptr, path.toUtf8().constData(),
                                       interface.toUtf8().constData(), member.toUtf8().constData(),
                                       parse(arguments).get(), &error)) {
        fail("A peer could not emit its signal", error);
    }
}
