// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "subjects.h"

#include "files.h"
#include "results.h"

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
            const QString name = QString::fromUtf8(given);
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
        if (!names.contains(file.subject.name)) {
            names << file.subject.name;
            once << file;
        }
    }
    return once;
}

}

QList<Subject> findSubjects(const CommandLine &commandLine, Report *report)
{
    const QList<NamedFile> files = withoutDuplicates(findAll(commandLine));
    QList<Subject> subjects;
    subjects.reserve(files.size());
    bool hasProblem = false;
    for (const NamedFile &file : files) {
        Subject subject = file.subject;
        subject.position = subjects.size() + 1;
        subject.count = files.size();
        if (!file.problem.isEmpty()) {
            hasProblem = true;
            report->showResult(subject, Results::problem(file.problem));
        }
        subjects << subject;
    }
    return hasProblem ? QList<Subject>() : subjects;
}
