// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "aboutsettings.h"

#include "devicefile.h"
#include "testrunner.h"

#include <optional>

/** The name of the operating system, from a file that tests write. */
class AboutSettingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_file.emplace("/etc/os-release"_s); }
    void cleanup() { m_file.reset(); }

    void tellsTheName_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<QString>("name");

        QTest::newRow("word") << QByteArray("NAME=Velmora\n") << "Velmora";
        QTest::newRow("quoted") << QByteArray("NAME=\"Velmora OS\"\n") << "Velmora OS";
        QTest::newRow("single quotes") << QByteArray("NAME='Velmora OS'\n") << "Velmora OS";
        QTest::newRow("another script") << QByteArray("NAME=\"Вельмора\"\n") << "Вельмора";
        QTest::newRow("place marker") << QByteArray("NAME=\"%1 OS\"\n") << "%1 OS";
        QTest::newRow("among others") << QByteArray("PRETTY_NAME=\"V 5\"\nID=v\nNAME=\"V\"\nVERSION=5\n") << "V";
        QTest::newRow("none, then the kernel's") << QByteArray("ID=velmora\n") << "Linux";
    }

    void tellsTheName()
    {
        QFETCH(QByteArray, contents);
        QFETCH(QString, name);
        m_file->write(contents);
        QCOMPARE(AboutSettings().baseOperatingSystemName(), name);
    }

    void readsTheFileAtEachQuestion()
    {
        const AboutSettings settings;
        m_file->write("NAME=One\n");
        QCOMPARE(settings.baseOperatingSystemName(), "One"_s);
        m_file->write("NAME=Two\n");
        QCOMPARE(settings.baseOperatingSystemName(), "Two"_s);
    }

    void belongsToItsParent()
    {
        QObject parent;
        QCOMPARE((new AboutSettings(&parent))->parent(), &parent);
    }

private:
    std::optional<DeviceFile> m_file;
};

VELMORA_TEST(AboutSettingsTest, Device, Core)

#include "tst_aboutsettings.moc"
