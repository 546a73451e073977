#include "OperatorPageTest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QScrollArea>
#include <QTest>

QComboBox *OperatorPageTest::weekday()
{
    return part<QComboBox>("NetInfoSettingDlg_comboBoxWeekly");
}

QComboBox *OperatorPageTest::day()
{
    return part<QComboBox>("NetInfoSettingDlg_comboBoxMonthly");
}

QCheckBox *OperatorPageTest::dataSwitch()
{
    return part<QCheckBox>("NetInfoSettingDlg_checkBoxDataVolume");
}

QLineEdit *OperatorPageTest::dataSize()
{
    return part<QLineEdit>("NetInfoSettingDlg_lineEditDataVolume");
}

QScrollArea *OperatorPageTest::page()
{
    return part<QScrollArea>("NetInfoSettingDlg_MainWidget");
}

QWidget *OperatorPageTest::content()
{
    return page()->widget();
}

QStringList OperatorPageTest::checkedRadios()
{
    QStringList checked;
    for (const char *name : { "Daily", "Weekly", "Monthly" }) {
        const QByteArray full = QByteArray("NetInfoSettingDlg_radio") + name;
        if (part<QRadioButton>(full.constData())->isChecked())
            checked << QString::fromLatin1(name).toLower();
    }
    return checked;
}

void OperatorPageTest::press(const char *name)
{
    QVERIFY2(widget(name), name);
    QVERIFY2(widget(name)->isEnabled(), name);
    QTest::mouseClick(widget(name), Qt::LeftButton, Qt::NoModifier,
                      QPoint(8, widget(name)->height() / 2));
}
