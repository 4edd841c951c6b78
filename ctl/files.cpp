// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "files.h"

#include "fillin.h"
#include "utf8.h"

#include <QCoreApplication>
#include <QFile>
#include <QUrl>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <optional>

namespace {

bool isUrl(const QByteArray &given)
{
    return given.left(6).toLower() == "file:/";
}

bool isEscape(const QByteArray &url, int position)
{
    const QByteArray digits = url.mid(position + 1, 2);
    bool isNumber = false;
    return digits.size() == 2 && digits.toUInt(&isNumber, 16) != 0 && isNumber;
}

// The path in a file URL, or nothing if the URL has another host or another part than a path, or an escape that stands
// for no byte of a path.
std::optional<QByteArray> pathOfUrl(const QByteArray &url)
{
    QByteArray path = url.mid(5);
    if (path.startsWith("//")) {
        const int end = path.indexOf('/', 2);
        const QByteArray host = path.mid(2, end - 2);
        if (end < 0 || !(host.isEmpty() || host.toLower() == "localhost")) {
            return std::nullopt;
        }
        path.remove(0, end);
    }
    if (path.contains('?') || path.contains('#')) {
        return std::nullopt;
    }
    for (int position = path.indexOf('%'); position >= 0; position = path.indexOf('%', position + 1)) {
        if (!isEscape(path, position)) {
            return std::nullopt;
        }
    }
    return QByteArray::fromPercentEncoding(path);
}

// Null, with errno, if the folder has been deleted, for example.
QByteArray workingDirectory()
{
    const std::unique_ptr<char, decltype(&std::free)> path(getcwd(nullptr, 0), &std::free);
    return QByteArray(path.get());
}

// Double slashes and single dots go. Double dots stay, because the folder before them may be a link.
QByteArray clean(const QByteArray &path)
{
    QByteArray absolute;
    const QList<QByteArray> parts = path.split('/');
    for (const QByteArray &part : parts) {
        if (!part.isEmpty() && part != ".") {
            absolute += '/' + part;
        }
    }
    return absolute.isEmpty() ? "/" : absolute;
}

QString lastError()
{
    return qt_error_string(errno);
}

QString findProblem(const QByteArray &path)
{
    struct stat status = {};
    if (stat(path.constData(), &status) != 0) {
        return lastError();
    }
    //: Why a file cannot be installed
    //% "not a regular file"
    return S_ISREG(status.st_mode) ? QString() : qtTrId("installctl-not-regular");
}

QString findReadingProblem(const QByteArray &path)
{
    // The file may have become something else, whose opening could block.
    const int file = open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (file < 0) {
        return lastError();
    }
    close(file);
    return QString();
}

NamedFile find(const QByteArray &given)
{
    NamedFile file;
    file.subject.given = showWord(given);
    file.subject.name = decodeUtf8(given);
    const std::optional<QByteArray> path = isUrl(given) ? pathOfUrl(given) : given;
    if (!path) {
        //: Why a file cannot be installed
        //% "not a URL of a file on this device"
        file.problem = qtTrId("installctl-wrong-url");
        return file;
    }
    const QByteArray folder = path->startsWith('/') ? "" : workingDirectory();
    if (folder.isNull()) {
        file.problem = lastError();
        return file;
    }
    // An empty path names no file, and not the working directory.
    const QByteArray absolute = path->isEmpty() ? QByteArray() : clean(folder + '/' + *path);
    file.subject.name = decodeUtf8(absolute);
    // The path as it was given: one that ends in a slash is that of a folder.
    file.problem = findProblem(*path);
    if (file.problem.isEmpty() && !readUtf8(absolute)) {
        //: The path of a file
        //% "the path is not UTF-8, so the service cannot be told"
        file.problem = qtTrId("installctl-not-utf8");
    }
    return file;
}

// The service finds the path of an argument in the same way.
bool isUnderstood(const QString &argument, const QString &path)
{
    return QUrl::fromUserInput(argument).toLocalFile() == path;
}

}

NamedFile findPackageFile(const QByteArray &given, bool sdkMode)
{
    NamedFile file = find(given);
    const QString path = file.subject.name;
    if (file.problem.isEmpty()) {
        file.problem = findReadingProblem(path.toUtf8());
    }
    file.subject.argument = path;
    if (!file.problem.isEmpty() || isUnderstood(path, path)) {
        return file;
    }
    file.subject.argument = QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
    // In sdk mode the service takes the argument for a path.
    if (sdkMode) {
        //: %1 is the option --sdk
        //% "with %1 a path must not end in a blank"
        file.problem = fillIn(qtTrId("installctl-blank-at-end"), QStringLiteral("--sdk"));
    }
    return file;
}

NamedFile findLauncher(const QByteArray &given)
{
    NamedFile file = find(given);
    file.subject.kind = Subject::Launcher;
    file.subject.argument = file.subject.name;
    return file;
}
