#pragma once
// The usage-limit page in the host's settings dialog.

#include <QDate>
#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>

#include "NetInfoSettingsPage.h"
#include "NetInfoSettingUILogic.h"

QT_BEGIN_NAMESPACE
class QComboBox;
class QLayout;
class QRect;
class QWidget;
QT_END_NAMESPACE

//! One per process. GUI thread only. The page becomes a child of the host's windows and may die
//! with them; it is built again when it is shown the next time. Values go to the store in memory;
//! the file is written by SaveNetInfoSettings alone.
class NetInfoSettingUIPlugin : public QObject, public NetInfoSettingsPage
{
    Q_OBJECT
public:
    //! The single instance; made on first use, without a page.
    static NetInfoSettingUIPlugin *GetInstance();
    //! Deletes the instance with its page.
    static void ReleaseInstance();

    NetInfoSettingUIPlugin();
    ~NetInfoSettingUIPlugin() override;

    // NetInfoSettingUIPlugin.cpp
    void ShowNetInfoSettingDlg(QWidget *parent, QRect &rect) override;
    bool HideNetInfoSetting() override;
    void SetLanguage() override;
    QWidget *pageWidget() const override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    //! The text of identifier \a key.
    QString tr(QString key);

    // NetInfoSettingUIPlugin_build.cpp
    //! Builds the page and loads the stored values.
    void InitNetInfoSetting();

    // NetInfoSettingUIPlugin_values.cpp
    //! The stored text of \a index; empty without a store.
    QString getVolumeLimitSettings(_VOLUME_LIMIT_SETTINGS_INDEX index);
    //! Stores what the user entered and writes the file. False when something is missing, which the
    //! user has been told.
    bool SaveNetInfoSettings() override;
    //! Loads the stored values again.
    void CancelNetInfoSetting() override;

signals:
    //! The limits as typed, in MB and hours, and the warning switches. Emitted before the file is
    //! written.
    void netInfoSettingsChanged(int dataVolume, int timeVolume, bool warnBefore, bool warnExceeds);

public slots: // their order is fixed
    void initRecurrence();
    void initSetLimit();
    void initDataVolume();
    void initTimeVolume();
    void initWarnings();
    void setLanguageSetPeriod();
    //! The date of a "dd-MM-yyyy" by position; separators are not checked.
    QDate DateFromString(QString &text);
    void applySettings();
    void applyLimitSettings();
    void applyWarningSettings();
    bool saveLimit();
    void saveWarning();
    void onSetRecurrenceSelect(bool isChecked);
    void onDailyRadioBtnSelect(bool isSelected);
    void onWeeklyRadioBtnSelect(bool isSelected);
    void onMonthlyRadioBtnSelect(bool isSelected);
    void onWeeklyIndexChange(int index);
    void onMonthlyIndexChange(int index);
    void onDataVolumeSelect(bool isChecked);
    void onTimeVolumeSelect(bool isChecked);
    void onWarnBeforeSelect(bool isChecked);
    void onWarnExceedSelect(bool isChecked);
    void onDateChangeEvent(QDate date);

private:
    struct Controls; // defined in NetInfoSettingUIPlugin_p.h
    struct LimitRow;

    void createPage();
    void assemblePeriod();
    void assemblePage();
    void createLimitRow(LimitRow &row);
    void placeLimitForm();
    void connectControls();
    void orderTabs();
    void nameControls();
    [[nodiscard]] QString hintText();
    [[nodiscard]] NetInfoSettingUILogic *store();
    [[nodiscard]] bool isTrue(_VOLUME_LIMIT_SETTINGS_INDEX index);
    void applyRecurrence();
    void applyLimitRow(const LimitRow &row);
    void savePeriod();
    [[nodiscard]] QString sizeText(const LimitRow &row) const;
    [[nodiscard]] bool saveLimitRow(const LimitRow &row);
    [[nodiscard]] bool hasRecurrence() const;
    void selectRecurrence(int recurrence);
    [[nodiscard]] bool selectVolume(const LimitRow &row, const LimitRow &other, bool isChecked);

    std::unique_ptr<Controls> m_controls;
    NetInfoSettingUILogic *m_store = nullptr; // a singleton, not owned; null until first needed

    static NetInfoSettingUIPlugin *m_pInstance;
};
