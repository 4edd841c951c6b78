// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "terminal.h"

#include <QByteArray>

#include <sys/ioctl.h>
#include <unistd.h>

bool Terminal::isAt(std::FILE *stream)
{
    return isatty(fileno(stream)) == 1;
}

bool Terminal::canChangeLines(std::FILE *stream)
{
    const QByteArray type = qgetenv("TERM");
    return isAt(stream) && !type.isEmpty() && type != "dumb";
}

bool Terminal::hasColours(std::FILE *stream)
{
    return canChangeLines(stream) && qEnvironmentVariableIsEmpty("NO_COLOR");
}

int Terminal::columns(std::FILE *stream)
{
    winsize size = {};
    return ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}
