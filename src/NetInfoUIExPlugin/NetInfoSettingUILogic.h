#pragma once
// The store of the user's usage-limit settings: texts by index, kept in DataUsageLimit.ini.

#include <QList>
#include <QString>

//! The settings in the order of the file's lines. The numbers are part of the file format.
enum _VOLUME_LIMIT_SETTINGS_INDEX : int {
    VLS_CHK_RECURRENCE = 0, //!< "true" or "false", as all up to VLS_CHK_TIME_VOLUME
    VLS_RADIO_DAILY = 1,
    VLS_RADIO_WEEKLY = 2,
    VLS_RADIO_MONTHLY = 3,
    VLS_CHK_VOLUME = 4,
    VLS_CHK_TIME_VOLUME = 5,
    VLS_SIZE_VOLUME = 6, //!< MB
    VLS_SIZE_TIME_VOLUME = 7, //!< hours
    VLS_CHK_WARN_BEFORE = 8,
    VLS_CHK_WARN_AFTER = 9,
    VLS_SHOW_DATA_WARN_AFTER = 10, //!< the main view's: whether a warning is still to be shown
    VLS_SHOW_DATA_WARN_BEFORE = 11,
    VLS_SHOW_TIME_WARN_BEFORE = 12,
    VLS_SHOW_TIME_WARN_AFTER = 13,
    VLS_START_DATE = 14, //!< "dd-MM-yyyy"
    VLS_START_WEEK_DATE = 15, //!< index into the settings page's weekdays
    VLS_START_MONTH_DATE = 16 //!< index into the settings page's days of the month
};

//! GUI thread only. Values are the exact texts of the file; nothing here converts or checks them.
class NetInfoSettingUILogic
{
public:
    //! The single instance; made on first use, without reading the file. Null when there is no
    //! memory for it.
    static NetInfoSettingUILogic *GetInstance();
    //! Deletes the instance. GetInstance() answers the dead one afterwards: nobody calls this, the
    //! store lives as long as the process.
    static void Destroy();

    NetInfoSettingUILogic();
    ~NetInfoSettingUILogic();

    //! Reads the file, which is made from the template when it is missing or empty, and appends its
    //! values. A file that cannot be read gives those of the template and three empty ones.
    void GetUseLimitSetting();
    //! The user file's path; the file is made from the template when it is missing or empty. Empty
    //! without user data folder, and with neither user file nor template.
    QString GetConfigFilePath();
    //! Sets a value in memory. \a index 0 to 16 makes the list complete; others are ignored.
    void updateUseLimitSetting(int index, QString value);
    //! Replaces the file by the values at once and on the disk, or leaves it as it is. False only
    //! without user data folder; true also when nothing could be written.
    bool saveUseLimitSetting();
    //! The value \a index; empty outside the list.
    QString value(int index) const;

private:
    QList<QString> m_settings;

    static NetInfoSettingUILogic *m_pInstance;
};
