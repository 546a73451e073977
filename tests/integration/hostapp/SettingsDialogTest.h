#pragma once
// A settings dialog with the pages of up to two plug-ins, "good" and "second".

#include <SettingsDialog.h>

#include <Languages.h>

#include <QLineEdit>
#include <QPointer>
#include <QScopedPointer>
#include <QScrollArea>
#include <QStackedWidget>
#include <QtTest>

#include "LibraryFolder.h"
#include "LoadedPlugin.h"
#include "TestLog.h"

class SettingsDialogTest : public QObject
{
    Q_OBJECT
protected:
    void open(int count = 1);
    template <typename Widget = QWidget>
    [[nodiscard]] Widget *child(const char *name) const
    {
        return m_dialog->findChild<Widget *>(QLatin1String(name));
    }
    [[nodiscard]] QLineEdit *first(int page = 0) const
    {
        return area(page)->findChild<QLineEdit *>("Test_First");
    }
    [[nodiscard]] QScrollArea *area(int index = 0) const
    {
        return qobject_cast<QScrollArea *>(m_dialog->findChild<QStackedWidget *>()->widget(index));
    }
    void press(const char *button)
    {
        QTest::mouseClick(child(button), Qt::LeftButton);
    }

    QScopedPointer<Languages> m_languages;
    QScopedPointer<LibraryFolder> m_folder;
    QScopedPointer<QWidget> m_window;
    QPointer<SettingsDialog> m_dialog;
    QList<QPointer<QObject>> m_plugins;
    QScopedPointer<TestLog> m_log;

private slots:
    void initTestCase();
    void init();
    void cleanup();
};
