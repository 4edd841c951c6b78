// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "uninstallscene.h"

#include <QDebug>

using Package::Transaction;
using Package::UninstallTransactionPkgKit;

namespace {

QString quoted(const QString &text)
{
    QString result;
    QDebug(&result).nospace() << text;
    return result;
}

}

UninstallTransactionPkgKit *UninstallScene::make(const QStringList &names, bool autoremove)
{
    auto transaction = new UninstallTransactionPkgKit(names, autoremove);
    connect(transaction, &Transaction::progress, this,
            [this](int value) { note(QStringLiteral("progress %1").arg(value)); });
    connect(transaction, &Transaction::failure, this,
            [this](const QString &details) { note(QLatin1String("failure ") + quoted(details)); });
    connect(transaction, &Transaction::success, this, [this] { note(QStringLiteral("success")); });
    connect(transaction, &Transaction::finished, this, [this] { note(QStringLiteral("finished")); });
    return transaction;
}

UninstallTransactionPkgKit *UninstallScene::startResolving()
{
    const auto transaction = make({QStringLiteral("a")});
    transaction->start();
    const QStringList beginning = m_packageKit->calls(0, QStringLiteral("Resolve(uint64 4, ['a'])"));
    return happens(QStringList(startLine()) + beginning) ? transaction : nullptr;
}

UninstallTransactionPkgKit *UninstallScene::startRemoving(bool autoremove)
{
    const QString id = QStringLiteral("a;1-1;noarch;installed");
    const auto transaction = make({QStringLiteral("a")}, autoremove);
    transaction->start();
    if (!happens(QStringList(startLine()) + m_packageKit->calls(0, QStringLiteral("Resolve(uint64 4, ['a'])")))) {
        return nullptr;
    }
    m_packageKit->tellPackage(0, id);
    m_packageKit->tellEnd(0, PackageKit::Transaction::ExitSuccess);
    const QString removal = QStringLiteral("RemovePackages(uint64 2, ['%1'], false, %2)")
                                    .arg(id, autoremove ? QStringLiteral("true") : QStringLiteral("false"));
    return happens(QStringList(resolvedLine(id)) + m_packageKit->calls(1, removal)) ? transaction : nullptr;
}

QString UninstallScene::startLine(const QString &names)
{
    return QLatin1String("debug: UninstallTransactionPkgKit::start: ") + names;
}

QString UninstallScene::resolvedLine(const QString &id, const QString &summary)
{
    return QStringLiteral("debug: Resolved: PackageKit::Transaction::InfoInstalled \"%1\" \"%2\"").arg(id, summary);
}

QString UninstallScene::endLine(const QString &exit, uint runtime)
{
    return QStringLiteral("debug: slotUninstallFinished: (\"a\") PackageKit::Transaction::%1 %2")
            .arg(exit)
            .arg(runtime);
}

QStringList UninstallScene::failing(const QString &phase, const QString &error, const QString &details)
{
    return {QStringLiteral("debug: %1 Error: (\"a\") PackageKit::Transaction::%2 %3")
                    .arg(phase, error, quoted(details)),
            QLatin1String("debug: void Package::UninstallTransactionPkgKit::giveUp(const QString&) ") + quoted(details),
            QLatin1String("failure ") + quoted(details), QStringLiteral("finished")};
}

QStringList UninstallScene::succeeding()
{
    return {QStringLiteral("success"), QStringLiteral("finished")};
}

QString UninstallScene::deletion()
{
    return QStringLiteral("debug: deleting UninstallTransactionPkgKit");
}
