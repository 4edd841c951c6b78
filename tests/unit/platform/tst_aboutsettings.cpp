// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "aboutsettings.h"

#include "devicefile.h"
#include "devicetest.h"

/** The name of the operating system, from a file that tests write. */
class AboutSettingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_file.reset(new DeviceFile(QStringLiteral("/etc/os-release"))); }
    void cleanup() { m_file.reset(); }

    void tellsTheName_data();
    void tellsTheName();
    void fallsBackToTheKernel();
    void readsTheFileAtEachQuestion();
    void belongsToItsParent();

private:
    std::unique_ptr<DeviceFile> m_file;
};

void AboutSettingsTest::tellsTheName_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("name");

    QTest::newRow("word") << QByteArray("NAME=Velmora\n") << QStringLiteral("Velmora");
    QTest::newRow("quoted") << QByteArray("NAME=\"Velmora OS\"\n") << QStringLiteral("Velmora OS");
    QTest::newRow("single quotes") << QByteArray("NAME='Velmora OS'\n") << QStringLiteral("Velmora OS");
    QTest::newRow("another script") << QByteArray("NAME=\"Вельмора\"\n") << QStringLiteral("Вельмора");
    QTest::newRow("place marker") << QByteArray("NAME=\"%1 OS\"\n") << QStringLiteral("%1 OS");
    QTest::newRow("among others") << QByteArray(
            "PRETTY_NAME=\"Velmora OS 5\"\nID=velmora\nNAME=\"Velmora OS\"\nVERSION=5\n")
                                  << QStringLiteral("Velmora OS");
}

void AboutSettingsTest::tellsTheName()
{
    QFETCH(QByteArray, contents);
    QFETCH(QString, name);
    m_file->write(contents);
    QCOMPARE(AboutSettings().baseOperatingSystemName(), name);
}

void AboutSettingsTest::fallsBackToTheKernel()
{
    m_file->write("ID=velmora\n");
    QCOMPARE(AboutSettings().baseOperatingSystemName(), QStringLiteral("Linux"));
}

void AboutSettingsTest::readsTheFileAtEachQuestion()
{
    const AboutSettings settings;
    m_file->write("NAME=One\n");
    QCOMPARE(settings.baseOperatingSystemName(), QStringLiteral("One"));
    m_file->write("NAME=Two\n");
    QCOMPARE(settings.baseOperatingSystemName(), QStringLiteral("Two"));
}

void AboutSettingsTest::belongsToItsParent()
{
    QObject parent;
    const auto *child = new AboutSettings(&parent);
    QCOMPARE(child->parent(), &parent);
}

int main(int argc, char **argv)
{
    return runOnDevice<AboutSettingsTest>(argc, argv);
}

#include "tst_aboutsettings.moc"
