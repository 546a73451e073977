#pragma once
// What the tests of the plug-in's widgets share: fakes, a plug-in folder, a message handler, and
// the tree as texts.

#include <QFont>
#include <QObject>
#include <QScopedPointer>
#include <QStringList>
#include <QWidget>

#include "FakeHost.h"
#include "FakeSdk.h"
#include "NetInfoUIService.h"
#include "PluginFolder.h"
#include "TestLog.h"

QT_BEGIN_NAMESPACE
class QTreeWidget;
class QTreeWidgetItem;
QT_END_NAMESPACE

class PluginTest : public QObject
{
    Q_OBJECT
protected:
    //! Makes and initialises the controller with all switches on but \a off.
    CNetInfoUIService *start(const QStringList &off = QStringList());
    //! Sets settings from \a firstIndex on in the store, which lives as long as the process.
    static void set(int firstIndex, const QStringList &values);
    //! Makes every row need less than 280 pixels, until the test ends.
    void useNarrowFont();
    //! Places the pages into a host window of 600 x 400.
    void show();
    [[nodiscard]] QTreeWidget *tree() const;
    //! Visible rows, two blanks before a text for each ancestor.
    [[nodiscard]] QStringList rows() const;
    //! The visible row whose text begins with \a text, under the node that begins with \a parent.
    [[nodiscard]] QTreeWidgetItem *row(const QString &text,
                                       const QString &parent = QString()) const;
    //! The widget named \a name, in or out of the host window.
    [[nodiscard]] static QWidget *widget(const char *name);
    //! The same as a Widget; null when it is none.
    template <typename Widget>
    [[nodiscard]] static Widget *part(const char *name)
    {
        return qobject_cast<Widget *>(widget(name));
    }
    [[nodiscard]] static QString setting(int index);

    static const QString kSource;

    QScopedPointer<PluginFolder> m_folder;
    QScopedPointer<TestLog> m_log;
    QScopedPointer<QWidget> m_window;
    QFont m_font;

protected slots: // not private: a test may add to them
    void init();
    void cleanup();
};
