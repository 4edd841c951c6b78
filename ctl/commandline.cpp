// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "commandline.h"

#include "fillin.h"
#include "utf8.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <limits>

namespace {

// The bus lets the service wait for 128 replies (Known behaviour 30), some of which are to calls for other reasons.
constexpr int MostNamesAtOnce = 100;

// Qt's timers count milliseconds.
constexpr int MostSeconds = std::numeric_limits<int>::max() / 1000;

// Latin-1 keeps every byte, whatever the encoding of a file name is.
QStringList wordsOf(int argc, char **argv)
{
    QStringList words;
    std::transform(argv, argv + argc, std::back_inserter(words),
                   [](const char *word) { return QString::fromLatin1(word); });
    return words;
}

QByteArray toBytes(const QString &word)
{
    return word.isNull() ? QByteArray() : word.toLatin1();
}

QString toText(const QString &word)
{
    return showWord(toBytes(word));
}

QString tellClash(const QString &one, const QString &other)
{
    //: %1 is an option such as --sdk or another word of the command line, %2 an option or a command
    //% "%1 does not go with %2"
    return fillIn(qtTrId("installctl-usage-clash"), one, other);
}

CommandLine::Command toCommand(const QString &word)
{
    if (word == QLatin1String("install")) {
        return CommandLine::Install;
    }
    if (word == QLatin1String("remove")) {
        return CommandLine::Remove;
    }
    return word == QLatin1String("monitor") ? CommandLine::Monitor : CommandLine::None;
}

/** Reads the options and words of a command line, and finds out whether they go together. */
class Reader
{
public:
    explicit Reader(const QStringList &words);

    CommandLine read() const { return m_line; }

private:
    void readOptions();
    void readCommand();
    bool isSet(const char *option) const { return m_parser.isSet(QLatin1String(option)); }
    QString argument(const char *option) const { return m_parser.value(QLatin1String(option)); }
    QString findError() const;
    QString findWrongOption() const;
    QString findWrongSubject() const;
    QString findWrongName() const;

    QCommandLineParser m_parser;
    CommandLine m_line;
    bool m_isSecondsWrong = false;
};

Reader::Reader(const QStringList &words)
{
    for (const char *name : {"sdk", "keep-user-data", "notify", "no-wait", "json", "quiet", "version"}) {
        m_parser.addOption(QCommandLineOption(QLatin1String(name)));
    }
    for (const char *name : {"launcher", "timeout"}) {
        m_parser.addOption(QCommandLineOption(QLatin1String(name), QString(), QStringLiteral("value")));
    }
    m_parser.addOption(QCommandLineOption(QStringList{QStringLiteral("h"), QStringLiteral("help")}));

    if (!m_parser.parse(words)) {
        m_line.error = toText(m_parser.errorText());
        return;
    }
    readOptions();
    readCommand();
    if (!m_line.help && !m_line.version) {
        m_line.error = findError();
    }
}

void Reader::readOptions()
{
    m_line.sdk = isSet("sdk");
    m_line.keepUserData = isSet("keep-user-data");
    m_line.notify = isSet("notify");
    m_line.noWait = isSet("no-wait");
    m_line.json = isSet("json");
    m_line.quiet = isSet("quiet");
    m_line.help = isSet("help");
    m_line.version = isSet("version");
    m_line.launcher = toBytes(argument("launcher"));
    if (isSet("timeout")) {
        bool isNumber = false;
        const uint seconds = argument("timeout").toUInt(&isNumber);
        m_isSecondsWrong = !isNumber || seconds > MostSeconds;
        m_line.seconds = static_cast<int>(seconds);
    }
}

void Reader::readCommand()
{
    const QStringList words = m_parser.positionalArguments();
    m_line.command = toCommand(words.value(0));
    const QStringList others = words.mid(1);
    std::transform(others.cbegin(), others.cend(), std::back_inserter(m_line.subjects), toBytes);
}

QString Reader::findError() const
{
    if (m_parser.positionalArguments().isEmpty()) {
        //: An error in a command line
        //% "a command is missing"
        return qtTrId("installctl-usage-no-command");
    }
    if (m_line.command == CommandLine::None) {
        //: %1 is the word that was given
        //% "there is no command %1"
        return fillIn(qtTrId("installctl-usage-unknown-command"), toText(m_parser.positionalArguments().constFirst()));
    }
    if (m_isSecondsWrong) {
        //: %1 is the option --timeout, %2 a number
        //% "%1 takes a whole number from 0 to %2"
        return fillIn(qtTrId("installctl-usage-seconds"), QStringLiteral("--timeout"), QString::number(MostSeconds));
    }
    const QString wrongOption = findWrongOption();
    return wrongOption.isEmpty() ? findWrongSubject() : wrongOption;
}

QString Reader::findWrongOption() const
{
    const bool installs = m_line.command == CommandLine::Install;
    const bool removes = m_line.command == CommandLine::Remove;
    const QString none;
    const QString command = m_parser.positionalArguments().constFirst();
    const QString noWait = m_line.noWait ? QStringLiteral("--no-wait") : none;
    const QString launcher = m_line.launcher.isNull() ? none : QStringLiteral("--launcher");
    const struct
    {
        const char *option;
        QString clash;
    } rules[] = {
            {"sdk", installs ? none : command},
            {"notify", installs ? noWait : command},
            {"launcher", removes ? none : command},
            {"keep-user-data", installs || removes ? launcher : command},
            {"no-wait", installs || removes ? none : command},
            {"quiet", installs || removes ? none : command},
    };
    for (const auto &rule : rules) {
        if (isSet(rule.option) && !rule.clash.isEmpty()) {
            return tellClash(QStringLiteral("--") + QLatin1String(rule.option), rule.clash);
        }
    }
    return QString();
}

QString Reader::findWrongSubject() const
{
    const bool needsSubject = m_line.command != CommandLine::Monitor && m_line.launcher.isNull();
    if (needsSubject && m_line.subjects.isEmpty()) {
        //: An error in a command line
        //% "a file or a name is missing"
        return qtTrId("installctl-usage-no-subject");
    }
    if (!needsSubject && !m_line.subjects.isEmpty()) {
        return tellClash(showWord(m_line.subjects.constFirst()),
                         m_line.launcher.isNull() ? m_parser.positionalArguments().constFirst()
                                                  : QStringLiteral("--launcher"));
    }
    return m_line.command == CommandLine::Remove ? findWrongName() : QString();
}

QString Reader::findWrongName() const
{
    const auto isWrong = [](const QByteArray &name) { return name.isEmpty() || !readUtf8(name); };
    if (std::any_of(m_line.subjects.cbegin(), m_line.subjects.cend(), isWrong)) {
        //: An error in a command line
        //% "a name is empty or not UTF-8"
        return qtTrId("installctl-usage-wrong-name");
    }
    // QtDBus drops it where the service receives a name, which would then be that of another package.
    const QString mark(QChar::ByteOrderMark);
    const auto isMarked = [&mark](const QByteArray &name) { return decodeUtf8(name).startsWith(mark); };
    if (std::any_of(m_line.subjects.cbegin(), m_line.subjects.cend(), isMarked)) {
        //: %1 is the code of a character
        //% "a name must not begin with the character %1"
        return fillIn(qtTrId("installctl-usage-marked-name"), QStringLiteral("U+FEFF"));
    }
    if (m_line.noWait && m_line.subjects.size() > MostNamesAtOnce) {
        //: %1 is the option --no-wait, %2 a number
        //% "with %1 no more than %2 names can be given"
        return fillIn(qtTrId("installctl-usage-too-many-names"), QStringLiteral("--no-wait"),
                      QString::number(MostNamesAtOnce));
    }
    return QString();
}

}

std::chrono::milliseconds CommandLine::timeLeft(QElapsedTimer clock) const
{
    const std::chrono::milliseconds left = std::chrono::seconds(limit()) - std::chrono::milliseconds(clock.elapsed());
    return std::max(left, std::chrono::milliseconds::zero());
}

CommandLine readCommandLine(int argc, char **argv)
{
    return Reader(wordsOf(argc, argv)).read();
}
