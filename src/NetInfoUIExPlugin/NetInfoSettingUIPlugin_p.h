#pragma once
// What the settings page keeps. Shared by its source files alone.

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPointer>
#include <QRadioButton>
#include <QVBoxLayout>

#include <host/ExtendLineEdit.h>

#include "DateEdit.h"
#include "NetInfoSettingUIPlugin.h"

//! The source path in the trace lines of all the page's files.
#define NETINFO_SETTING_PAGE_SOURCE "../../src/NetInfoUIExPlugin/NetInfoSettingUIPlugin.cpp"

//! Writes the null line of the caller and leaves it when \a pointer is null.
#define NETINFO_REQUIRE_CONTROL(pointer, leave)                                                    \
    if (!(pointer)) {                                                                              \
        NETINFO_TRACE_NULL(NETINFO_SETTING_PAGE_SOURCE);                                           \
        leave;                                                                                     \
    }

//! A limit's row: names, texts and bounds are fixed, widgets are null while its switch is off.
struct NetInfoSettingUIPlugin::LimitRow
{
    const char *feature;
    const char *checkBoxName;
    const char *checkBoxText;
    const char *sizeName;
    const char *layoutName;
    const char *unitText;
    const char *missingText; // what is said when the size is empty
    int digits;
    _VOLUME_LIMIT_SETTINGS_INDEX switchIndex;
    _VOLUME_LIMIT_SETTINGS_INDEX sizeIndex;
    QPointer<QCheckBox> checkBox = nullptr;
    QPointer<ExtendLineEdit> size = nullptr;
    QPointer<QLabel> unit = nullptr;
};

struct NetInfoSettingUIPlugin::Controls
{
    QPointer<QWidget> page;
    QPointer<QGroupBox> period;
    QPointer<QGroupBox> recurrence;
    QPointer<QGroupBox> limit;
    QPointer<QGroupBox> warnings;
    QPointer<QWidget> dateWidget;
    QPointer<DateEdit> date;
    QPointer<QLabel> dateLabel;
    QPointer<QLabel> hint;
    QPointer<QCheckBox> isRecurring;
    QPointer<QLabel> isRecurringLabel;
    QPointer<QRadioButton> radios[3]; // daily, weekly, monthly
    QPointer<QLabel> radioLabels[3];
    QPointer<QComboBox> weekday; // from Sunday
    QPointer<QComboBox> day; // of the month
    QPointer<QGridLayout> recurrenceGrid;
    QPointer<QFormLayout> limitForm;
    QPointer<QGridLayout> warningGrid;
    LimitRow data = { "DATAVOLUMELIMIT",
                      "NetInfoSettingDlg_checkBoxDataVolume",
                      "IDS_CHK_VOLUME",
                      "NetInfoSettingDlg_lineEditDataVolume",
                      "NetInfoSettingDlg_hlayoutDataVolume",
                      "IDS_UNIT_DATA_VOLUME_MB",
                      "IDS_INPUT_DATA_VOLUME",
                      6,
                      VLS_CHK_VOLUME,
                      VLS_SIZE_VOLUME };
    LimitRow time = { "TIMEVOLUMELIMIT",
                      "NetInfoSettingDlg_checkBoxTimeVolume",
                      "IDS_VOLUME_LIMIT",
                      "NetInfoSettingDlg_lineEditTimeVolume",
                      "NetInfoSettingDlg_layoutTimeVolume",
                      "IDS_UNIT_HOURS",
                      "IDS_INPUT_TIME_VOLUME_LIMIT",
                      5,
                      VLS_CHK_TIME_VOLUME,
                      VLS_SIZE_TIME_VOLUME };
    QPointer<QCheckBox> warnBefore;
    QPointer<QCheckBox> warnExceed;
    QString pendingDate; // "dd-MM-yyyy"; empty: not chosen
    QString pendingWeekday; // index as text
    QString pendingDay;
};
