// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "qmcedisplayscene.h"

#include "roundtrip.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QTest>

const QString QMceDisplayScene::Bus = QStringLiteral("org.freedesktop.DBus");
const QString QMceDisplayScene::Mce = QStringLiteral("com.nokia.mce");
const QString QMceDisplayScene::Question =
        QStringLiteral("com.nokia.mce /com/nokia/mce/request com.nokia.mce.request.get_display_status()");
const QString QMceDisplayScene::TurnsOff = QStringLiteral("state 0");
const QString QMceDisplayScene::Dims = QStringLiteral("state 1");
const QString QMceDisplayScene::TurnsOn = QStringLiteral("state 2");

void QMceDisplayScene::setUpScene()
{
    m_log.emplace(&m_journal);
}

void QMceDisplayScene::tearDownScene()
{
    m_display.reset();
    m_mce.reset();
    m_log.reset();
    m_journal.clear();
    // The next MCE can't have the name before this one has lost it.
    QTRY_VERIFY(!m_bus.interface()->isServiceRegistered(Mce));
}

std::unique_ptr<RecordingPeer> QMceDisplayScene::makePeer(const QStringList &names, const PeerAnswer &answer)
{
    auto peer = std::make_unique<RecordingPeer>(qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS"), names, &m_journal);
    peer->answer(QStringLiteral("get_display_status"), answer);
    return peer;
}

void QMceDisplayScene::startMce(const PeerAnswer &answer)
{
    m_mce = makePeer({Mce}, answer);
}

void QMceDisplayScene::watch()
{
    m_display = std::make_unique<QMceDisplay>();
    connect(m_display.get(), &QMceDisplay::stateChanged, this,
            [this] { m_journal.add(QStringLiteral("state %1").arg(m_display->state())); });
}

bool QMceDisplayScene::watchWith(const QByteArray &values)
{
    startMce(PeerAnswer::values(values));
    watch();
    const bool settled = settle();
    m_journal.clear();
    return settled;
}

bool QMceDisplayScene::answerHeld(const QByteArray &values)
{
    return m_mce->answerHeld(PeerAnswer::values(values)) && settle();
}

void QMceDisplayScene::emitStatus(RecordingPeer &peer, const QByteArray &values)
{
    peer.emitSignal(QStringLiteral("/com/nokia/mce/signal"), QStringLiteral("com.nokia.mce.signal"),
                    QStringLiteral("display_status_ind"), values);
}

bool QMceDisplayScene::settle(const QString &peer)
{
    const bool settled = roundTrip(m_bus, Bus) && roundTrip(m_bus, peer);
    // An answer that came before anybody could wait for it goes through the event loop several times.
    QCoreApplication::processEvents(QEventLoop::AllEvents, 5000);
    return settled;
}

QStringList QMceDisplayScene::takeEntries()
{
    const QStringList entries = m_journal.entries();
    m_journal.clear();
    return entries;
}
