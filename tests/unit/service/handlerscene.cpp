// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "handlerscene.h"

void HandlerScene::setUpHandler()
{
    setUp();
    m_handler = std::make_unique<InstallationHandler>();
    m_handler->setEngine(engine());
    connect(m_handler.get(), &InstallationHandler::needConfirm, this, [this] { note(QStringLiteral("needConfirm")); });
    connect(m_handler.get(), &InstallationHandler::installFinished, this,
            [this](bool success, const QString &errorString) { note(finished(success, errorString, state())); });
    settle();
    m_journal.clear();
}

void HandlerScene::tearDownHandler()
{
    if (m_handler) {
        endEverything();
    }
    m_handler.reset();
    tearDown();
}

// The handler goes without what is still running, and nobody would release it.
// A cancellation ends all, even what waits for ever.
void HandlerScene::endEverything()
{
    for (int file = 0; file < 10 && state() != QLatin1String("idle"); ++file) {
        emit HandlerInternals::view(m_handler.get())->installationCancelled();
    }
}

QString HandlerScene::state() const
{
    const int running = HandlerInternals::count(m_handler.get());
    const int waiting = HandlerInternals::pending(m_handler.get()).size();
    if (HandlerInternals::idleTimer(m_handler.get())->isActive()) {
        return running == 0 && waiting == 0 ? QStringLiteral("idle") : QStringLiteral("wrongly idle");
    }
    return QStringLiteral("%1 running, %2 waiting").arg(running).arg(waiting);
}

void HandlerScene::dismiss()
{
    TestDialog::dismiss(TestDialog::window());
    TestDialog::deleteScheduled();
}

void HandlerScene::confirm()
{
    TestDialog::confirm(TestDialog::window());
    TestDialog::deleteScheduled();
}

QString HandlerScene::finished(bool success, const QString &errorString, const QString &state)
{
    return QStringLiteral("installFinished %1 \"%2\" while %3")
            .arg(success ? QStringLiteral("well") : QStringLiteral("badly"), errorString, state);
}
