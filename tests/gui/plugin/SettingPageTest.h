#pragma once
// What the tests of the settings page share: the page in a host window, its controls as a person
// uses them, the settings in memory and in the user's file.

#include <QDate>
#include <QTemporaryDir>
#include <QVariantList>

#include "NetInfoSettingUILogic.h"
#include "NetInfoSettingUIPlugin.h"
#include "PluginTest.h"

QT_BEGIN_NAMESPACE
class QCheckBox;
class QComboBox;
class QLineEdit;
class QRadioButton;
QT_END_NAMESPACE

class DateEdit;

//! What the page's signal carried, and the user's file at that moment.
struct HeardSignal
{
    QVariantList arguments;
    QByteArray file;
};

class SettingPageTest : public PluginTest
{
    Q_OBJECT
protected:
    //! Makes the controller with all switches on but \a off, and opens the page in the window.
    CNetInfoUIService *open(const QStringList &off = QStringList());
    //! Opens the page again, in \a parent or in the window.
    void openAgain(QWidget *parent = nullptr);
    [[nodiscard]] static QWidget *page();
    //! The page's part "NetInfoSettingDlg_" and \a name; null when it is none. The operator page
    //! has parts of the same names.
    template <typename Part>
    [[nodiscard]] static Part *at(const char *name)
    {
        const QString full = QLatin1String("NetInfoSettingDlg_") + QLatin1String(name);
        return page() ? page()->findChild<Part *>(full) : nullptr;
    }
    [[nodiscard]] static QCheckBox *recurrence();
    [[nodiscard]] static DateEdit *date();
    [[nodiscard]] static QRadioButton *radio(const char *name);
    [[nodiscard]] static QComboBox *weekday();
    [[nodiscard]] static QComboBox *day();
    [[nodiscard]] static QCheckBox *check(const char *name);
    [[nodiscard]] static QLineEdit *size(const char *name);
    //! OK and Cancel of the host's dialog.
    [[nodiscard]] static bool ok();
    static void cancel();
    //! Notes the signals of this controller's page from now on.
    void listen();
    //! Presses control \a name with the mouse where it has its mark.
    static void press(const char *name);
    //! The same of a control that is disabled.
    static void pressDisabled(const char *name);
    //! Empties the line edit of "Data" or "Time" and types \a text.
    static void type(const char *name, const QString &text);
    //! Opens the calendar and goes \a days on with the keyboard.
    static void chooseDate(int days);
    //! "daily", "weekly", "monthly" of the radio buttons that are checked.
    [[nodiscard]] static QStringList checkedRadios();
    //! "date", "radios", "weekday", "day" of what is enabled; "some radios" when they differ.
    [[nodiscard]] static QString enabledParts();
    [[nodiscard]] static QStringList settings();
    //! A complete settings file of \a values.
    [[nodiscard]] static QByteArray fileOf(const QStringList &values);
    [[nodiscard]] QByteArray file() const;
    [[nodiscard]] QString userFile() const;

    QScopedPointer<QTemporaryDir> m_user;
    QList<HeardSignal> m_heard;

    static const QString kOn;
    static const QString kOff;
    static const QString kPageSource;

protected slots:
    void init();
};
