// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"

namespace {

QStringList s_log;
QtMessageHandler s_previous = nullptr;

void recordMessage(QtMsgType level, const QMessageLogContext &context, const QString &text)
{
    s_log.append(text);
    s_previous(level, context, text);
}

}

void DialogTest::setLocale(const QLocale &locale)
{
    m_catalogues.reset();
    m_catalogues = std::make_unique<Catalogues>(locale);
}

void DialogTest::setFontSize(double pixels)
{
    QFont font = m_font;
    font.setPixelSize(qRound(pixels));
    QGuiApplication::setFont(font);
}

void DialogTest::init()
{
    setLocale(QLocale::c());
    s_log.clear();
    s_previous = qInstallMessageHandler(recordMessage);
}

void DialogTest::cleanup()
{
    qInstallMessageHandler(s_previous);
    m_catalogues.reset();
    QGuiApplication::setFont(m_font);
    QGuiApplication::setPalette(m_palette);
    QCOMPARE(s_log, QStringList());
}
