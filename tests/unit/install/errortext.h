// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QTemporaryDir>

/** The C library's text of one error number in another language, for as long as the object lives. */
class ErrorText
{
public:
    /** The text that strerror() gives for error, in UTF-8. */
    ErrorText(int error, const QByteArray &text);
    ~ErrorText();
    ErrorText(const ErrorText &) = delete;
    ErrorText &operator=(const ErrorText &) = delete;

private:
    QTemporaryDir m_catalogues;
    QByteArray m_previousFolder;
    QByteArray m_previousLocale;
};
