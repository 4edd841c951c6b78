// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "subjects.h"

#include "utf8.h"

#include <QSet>

namespace {

QList<NamedFile> findAll(const CommandLine &commandLine)
{
    QList<NamedFile> found;
    if (!commandLine.launcher.isNull()) {
        found << findLauncher(commandLine.launcher);
    }
    for (const QByteArray &given : commandLine.subjects) {
        if (commandLine.command == CommandLine::Install) {
            found << findPackageFile(given, commandLine.sdk);
        } else {
            const QString name = decodeUtf8(given);
            found << NamedFile{{Subject::Package, name, name, name}, QString()};
        }
    }
    return found;
}

QList<NamedFile> withoutDuplicates(const QList<NamedFile> &files)
{
    QList<NamedFile> once;
    QSet<QString> names;
    for (const NamedFile &file : files) {
        // A problem is told for each of the user's words.
        if (!file.problem.isEmpty() || !names.contains(file.subject.name)) {
            names << file.subject.name;
            once << file;
        }
    }
    return once;
}

}

QList<NamedFile> findSubjects(const CommandLine &commandLine)
{
    QList<NamedFile> files = withoutDuplicates(findAll(commandLine));
    int position = 0;
    for (NamedFile &file : files) {
        file.subject.position = ++position;
        file.subject.count = files.size();
    }
    return files;
}
