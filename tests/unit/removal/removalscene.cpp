// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "removalscene.h"

#include <QDebug>
#include <QTest>

namespace {

constexpr int deadline = 5000; // milliseconds

}

void RemovalScene::init()
{
    m_packageKit.emplace(&m_journal);
    QVERIFY(PackageKitPeer::settle());
    m_journal.clear();
    m_log.emplace(&m_journal);
}

void RemovalScene::cleanup()
{
    m_log.reset();
    m_packageKit.reset();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool RemovalScene::happens(const QStringList &expected)
{
    const bool enough = QTest::qWaitFor([&] { return m_journal.entries().size() >= expected.size(); }, deadline);
    // What nobody expects has arrived then, too. A daemon that has gone tells nothing more.
    PackageKitPeer::settle();
    const QStringList entries = m_journal.entries();
    m_journal.clear();
    if (!enough || entries != expected) {
        qInfo().noquote() << "Expected:\n  " << expected.join(QLatin1String("\n   ")) << "\nbut this happened:\n  "
                          << entries.join(QLatin1String("\n   "));
        return false;
    }
    return true;
}
