// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// packagekitclient OPERATION ARGUMENT... [+ OPERATION ARGUMENT...]...
//
// Makes the same requests to PackageKit as the service, through the same library and all at once. OPERATION is
// `resolve` (names of installed packages), `search` (one path) or `remove` (package ids). Prints each event as a line
// of JSON that begins with the request's number. Exits after the end of the last request.

#include <PackageKit/Daemon>

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMetaEnum>

#include <algorithm>
#include <cstdio>

using PackageKit::Daemon;
using PackageKit::Transaction;

namespace {

/** Prints the events of one request, and counts the requests that have not ended. */
class Report
{
public:
    explicit Report(int number)
        : m_number(number)
    {
        ++s_unfinished;
    }

    /** Prints the request's number, the event and its values. */
    void event(const QString &event, QJsonArray values) const
    {
        values.prepend(event);
        values.prepend(m_number);
        std::puts(QJsonDocument(values).toJson(QJsonDocument::Compact).constData());
        std::fflush(stdout);
    }

    /** Prints the end of the request, and leaves the event loop after the last one. */
    void finished(const QJsonArray &values) const
    {
        event(QStringLiteral("finished"), values);
        if (--s_unfinished == 0) {
            QCoreApplication::quit();
        }
    }

private:
    inline static int s_unfinished = 0;
    int m_number;
};

template<typename Enum>
QString enumerator(Enum value)
{
    return QString::fromLatin1(QMetaEnum::fromType<Enum>().valueToKey(value));
}

Transaction *request(const QString &operation, const QStringList &arguments)
{
    if (operation == QLatin1String("resolve")) {
        return Daemon::resolve(arguments, Transaction::FilterInstalled);
    }
    if (operation == QLatin1String("search")) {
        return Daemon::searchFiles(arguments.value(0), Transaction::FilterInstalled);
    }
    if (operation == QLatin1String("remove")) {
        return Daemon::removePackages(arguments, false, false, Transaction::TransactionFlagOnlyTrusted);
    }
    return nullptr;
}

bool start(const QStringList &words, int number)
{
    Transaction *transaction = request(words.value(0), words.mid(1));
    if (!transaction) {
        return false;
    }
    const Report report(number);
    QObject::connect(transaction, &Transaction::package,
                     [report](Transaction::Info info, const QString &id, const QString &summary) {
                         report.event(QStringLiteral("package"), {enumerator(info), id, summary});
                     });
    QObject::connect(transaction, &Transaction::itemProgress,
                     [report](const QString &id, Transaction::Status status, uint percentage) {
                         report.event(QStringLiteral("progress"), {id, enumerator(status), int(percentage)});
                     });
    QObject::connect(transaction, &Transaction::errorCode, [report](Transaction::Error error, const QString &details) {
        report.event(QStringLiteral("error"), {enumerator(error), details});
    });
    QObject::connect(transaction, &Transaction::finished, [report](Transaction::Exit exit, uint runtime) {
        report.finished({enumerator(exit), int(runtime)});
    });
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList words = application.arguments().mid(1);
    int number = 0;
    for (auto begin = words.begin();; ++number) {
        const auto end = std::find(begin, words.end(), QLatin1String("+"));
        if (!start(QStringList(begin, end), number)) {
            std::fputs("Usage: packagekitclient resolve|search|remove ARGUMENT...\n", stderr);
            return 2;
        }
        if (end == words.end()) {
            break;
        }
        begin = end + 1;
    }
    return application.exec();
}
