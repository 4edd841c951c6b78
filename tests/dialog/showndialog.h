// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QImage>
#include <QObject>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>

#include <memory>

/** The package that the dialog shows, with the properties of the service's package reader. */
class PackageTexts : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString name MEMBER name NOTIFY nameChanged)
    Q_PROPERTY(QString version MEMBER version NOTIFY versionChanged)
    Q_PROPERTY(QString summary MEMBER summary NOTIFY summaryChanged)
    Q_PROPERTY(QString fileName MEMBER fileName NOTIFY fileNameChanged)

public:
    /** A package for tests that do not care about it; never changed. */
    static PackageTexts *ordinary()
    {
        static PackageTexts texts;
        return &texts;
    }

    void setAll(const QString &text) { name = version = summary = fileName = text; }

    QString name = QStringLiteral("lighthouse-tides");
    QString version = QStringLiteral("2.4.1");
    QString summary = QStringLiteral("Tide tables and weather for small boats");
    QString fileName = QStringLiteral("/home/user/Downloads/lighthouse-tides-2.4.1-1.aarch64.rpm");

Q_SIGNALS:
    void nameChanged();
    void versionChanged();
    void summaryChanged();
    void fileNameChanged();
};

/** The ids of the items that show the package's texts. */
constexpr const char *PackageTextItems[] = {"name", "version", "summary", "fileName", "folder"};

/** The installed dialog in an engine of its own, shown, with the answers that it gives. */
class ShownDialog
{
public:
    /**
     * texts: the package to show, borrowed; may be null. size: of the window, in pixels. Aborts the program if the
     * dialog cannot be created or shown.
     */
    explicit ShownDialog(PackageTexts *texts = PackageTexts::ordinary(), const QSize &size = QSize(540, 960));

    /** Shows the dialog in an engine that has no property for a package. */
    struct WithoutPackage
    {
    };
    explicit ShownDialog(WithoutPackage withoutPackage);

    QQuickWindow *window() const { return m_window.get(); }

    /** Whether the dialog was visible before show() was called. */
    bool wasVisibleEarly() const { return m_wasVisibleEarly; }

    /** The item of this id; aborts the program if there is none. */
    QQuickItem *item(const char *id) const;

    /** The text, or another property, of the item of this id. */
    QVariant property(const char *id, const char *name) const { return item(id)->property(name); }

    /** The time before "Install" takes a pointer. */
    QObject *rest() const;

    /** Whether "Install" takes a pointer. */
    bool isReady() const { return m_window->property("ready").toBool(); }

    /** Keeps "Install" from taking a pointer, until makeReady(). */
    void keepUnready() const { rest()->setProperty("interval", 1 << 30); }

    /** All visible text items. */
    QList<QQuickItem *> texts() const;

    /** The rectangle of an item in the window. */
    static QRectF place(const QQuickItem *item);
    QRectF place(const char *id) const { return place(item(id)); }

    /** The middle of an item, in the window. */
    QPoint middle(const char *id) const { return place(id).center().toPoint(); }

    /** Whether a text is broken between words only. A word that is longer than its line may be broken anywhere. */
    static bool breaksAtWordsOnly(const QQuickItem *text);

    /** Waits until the window has been laid out and painted again. */
    void awaitFrame() const;

    /** Waits until the window has been painted a few times, and all that follows has happened. */
    void awaitFrames() const;

    /** Waits until "Install" takes a pointer, and has been painted like that. */
    void awaitReady() const;

    /** The same, without the time that a user has to wait. */
    void makeReady() const;

    QImage picture() const;

    /** The numbers of answers: to install, to cancel, and both. */
    int requested() const { return m_requested->count(); }
    int dismissed() const { return m_dismissed->count(); }
    int answers() const { return requested() + dismissed(); }

private:
    void show(const QSize &size);

    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    bool m_wasVisibleEarly = true;
    std::unique_ptr<QSignalSpy> m_requested;
    std::unique_ptr<QSignalSpy> m_dismissed;
};
