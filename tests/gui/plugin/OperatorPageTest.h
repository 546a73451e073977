#pragma once
// What the tests of the operator page share.

#include "PluginTest.h"

QT_BEGIN_NAMESPACE
class QCheckBox;
class QComboBox;
class QLineEdit;
class QScrollArea;
QT_END_NAMESPACE

class OperatorPageTest : public PluginTest
{
    Q_OBJECT
protected:
    [[nodiscard]] static QComboBox *weekday();
    [[nodiscard]] static QComboBox *day();
    [[nodiscard]] static QCheckBox *dataSwitch();
    [[nodiscard]] static QLineEdit *dataSize();
    [[nodiscard]] static QScrollArea *page();
    //! What the page scrolls.
    [[nodiscard]] static QWidget *content();
    //! "daily", "weekly", "monthly" of the radio buttons that are checked.
    [[nodiscard]] static QStringList checkedRadios();
    //! Clicks the control \a name where a radio button and a check box have their mark.
    static void press(const char *name);
};
