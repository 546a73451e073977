#pragma once
// The controller of the plug-in's main view.

#include <QIcon>
#include <QItemDelegate>
#include <QObject>
#include <QString>
#include <QStringList>

#include <host/ISettingUIPlugin.h>
#include <host/ISwitchUIService.h>
#include <host/velq.h>

#include <memory>

QT_BEGIN_NAMESPACE
class QComboBox;
class QMenu;
class QPoint;
class QRadioButton;
class QRect;
class QTime;
class QTreeWidgetItem;
class QWidget;
QT_END_NAMESPACE
class NetInfoSettingsPage;
class SkProgressBar;
struct NetInfoData;
namespace NetInfoRules {
struct LimitWarnings;
}

//! The tree's delegate: a focused row shows no focus frame.
class GridDelegateLayout : public QItemDelegate
{
public:
    explicit GridDelegateLayout(QObject *parent = nullptr);
    //! Sets a white hairline pen when the row has the focus and draws nothing.
    void drawFocus(QPainter *painter, const QStyleOptionViewItem &option,
                   const QRect &rect) const override;
};

//! One per process; from the entry object's first use until the host's destroy call. GUI thread
//! only. Its pages become children of the host's windows and may die with them at any time.
class CNetInfoUIService : public QObject, public ISettingUIPlugin, public ISwitchUIService
{
    Q_OBJECT
    Q_INTERFACES(ISettingUIPlugin ISwitchUIService)
public:
    // Lifecycle and host commands: NetInfoUIService.cpp
    //! The controller, made on first use; it shows nothing before Init.
    static CNetInfoUIService *instance();
    //! Tears the controller down and deletes it.
    static void Destroy();

    CNetInfoUIService();
    ~CNetInfoUIService() override;

    //! Builds both pages and starts the statistics. True. A second call changes nothing.
    bool Init();
    //! Places the operator page into \a rect of \a parent and shows it; the normal page is placed
    //! there too and stays hidden. True.
    bool ShowWindow(QWidget *parent, QRect &rect);
    //! Fits the normal page to \a rect. 0.
    int FitSize(QRect &rect);
    void Hide();
    int DoModal();
    //! 320: language changed; 837: stored statistics changed; any other changes nothing. 0.
    int Notify(unsigned int msg, unsigned int wparam, unsigned int lparam);
    //! Deletes the pages and ends the statistics.
    void OnDestroy();
    //! Connects the settings page, which stays its owner's; null takes it away.
    void setSettingsPage(NetInfoSettingsPage *page);

    bool OnClickSettingOkButton() override;
    bool OnClickSettingCancelButton() override;
    bool ShowSettingDialog(QWidget *parent, QRect &rect) override;
    QString GetModuleName() override;
    bool HideSetting() override;
    bool IsActiveSetting() override;

    bool IsTopWindow() override;
    QString GetWindowTitle() override;
    void SwitchWindow() override;

    // Pages and host services: NetInfoUIService_page.cpp
    void createMainWidget();
    void createLeftWidget();
    //! The right pane; not shown while the switch SHOWGRAPH is off.
    void createGraphWidget();
    //! The text of identifier \a key.
    QString tr(QString key);
    //! The icon in file \a path, mirrored in right-to-left layouts. A file is read once for each
    //! layout direction. A file that is no image gives a null icon.
    QIcon setIcon(QString path);
    //! Whether the host has the plug-in with identifier \a id.
    bool isPluginAvailable(QString id);

    // Statistics tree: NetInfoUIService_tree.cpp
    void createStatisticsWidget();
    void addUpLoadWidgetStatisticsWidget();
    void addDownLoadWidgetStatisticsWidget();
    void addStatisticsNodeComponets();
    void addStatisticsMonthlyNode();
    void addStatisticsYearlyNode();
    //! Replaces the limit meters by a notes line under the tree.
    void addNoteInTree();
    //! Widens the first column when \a item needs more than 280 pixels.
    void checkTreeColumnWidth(QTreeWidgetItem *item);
    //! Fits the first column to the tree and to its widest row.
    void enableScroll();

    // Context menu: NetInfoUIService_menu.cpp
    void createRightClickActions();
    void updateRightClickItems();
    //! Adds the actions that apply to \a menu.
    void fillTreeContextMenu(QMenu *menu);

    // Live update: NetInfoUIService_live.cpp
    //! Fetches the stored figures and rewrites their rows; false leaves the rows as they were.
    bool updateStoredStatistics();
    void updateTransferStrings();
    void updateStatisticsStrings();
    //! Start of the specific history.
    QTime GetBeforeNowThreeMonthlyTime();

    // Limit area: NetInfoUIService_limitarea.cpp
    //! Adds the limit area to the left pane. Without any limit a notes line takes its place.
    void createVolumeLimitWidget();
    //! Adds captions and meters to the limit area.
    void addDataVolumeWidget();
    void updateDataVolumeStrings();

    // Limits: NetInfoUIService_limits.cpp
    //! Reads the settings again.
    void InitParam();
    void InitDate();
    void InitDataTimeVolLimit();
    //! Whether \a used, in MB, reaches the data limit's warning percentage.
    bool OperationPersent(long double used);
    //! Whether \a used reaches the time warning percentage of \a limit.
    bool TimeOperationPersent(long double used, unsigned long long limit);
    //! Shows the use in a meter. 0: nothing to warn of; 1: near the limit; 2: reached.
    int ShowDataColorPrompt(long double usedMB);
    int ShowTimeColorPrompt(long double usedSeconds);
    //! Show the use in a period and warn when that is due.
    void ShowDailyDataVolumeLimit();
    void ShowWeeklyDataVolumeLimit();
    void ShowMonthlyDataVolumeLimit();
    void ShowSpecHistroyDataVolumeLimit();
    void ShowDailyTimeVolumeLimit();
    void ShowWeeklyTimeVolumeLimit();
    void ShowMonthlyTimeVolumeLimit();
    void ShowSpecHistroyTimeVolumeLimit();
    void ShowDaily();
    void ShowWeekly();
    void ShowMonthly();
    void ShowSpecHistroy();
    //! Shows the use in the period that is set.
    void UpdateTreeItems();
    //! Looks whether a new period has begun since the last report.
    void UpdateNewPeriodTipInfo();
    //! Arms the warnings again when the time of \a first is less than that of \a second.
    void UpdatePeriodFields(NetInfoData first, NetInfoData second);

    // Operator page: NetInfoUIService_operator.cpp
    void initRecurrence();
    void initDataVolume();
    void createNRLMainWidget();
    //! Loads the settings into the controls.
    void initNRLNetInfoSettings();
    void setNorellLanguage();

public slots:
    void movedSplitter(int position, int index);
    void showTreeContextMenu(const QPoint &position);
    void expandAll();
    void collapseAll();
    void resetStatistics();
    void onResetButtonClicked();
    void onStatisticsChanged(unsigned long upSpeed, unsigned long downSpeed, qulonglong upData,
                             qulonglong downData, QString time);
    void onSetLimitButtonClicked();
    //! The settings have changed; the figures are read from the store.
    void onNetInfoSettingsChanged(int dataVolume, int timeVolume, bool warnBefore,
                                  bool warnExceeds);
    void onDailyRadioBtnSelect(bool checked);
    void onWeeklyRadioBtnSelect(bool checked);
    void onMonthlyRadioBtnSelect(bool checked);
    void onWeeklyIndexChange(int index);
    void onMonthlyIndexChange(int index);
    void onDataVolumeSelect(bool checked);
    void onSaveNetInfoSettings();

private slots:
    void forgetTree();

private:
    struct Page; // defined in NetInfoUIService_p.h
    struct TreeRows;
    struct LiveFigures;
    struct Limits;
    struct OperatorPage;

    void createAuxiliaryWidgets();
    void startStatistics();
    void useSettingsPage();
    void createOperatorPage();
    void changeLanguage();
    void translateLabels();
    void applyColumnWidth();
    [[nodiscard]] bool isFunctionEnabled(const char *name) const;

    void setUpTree(QItemDelegate *delegate);
    void addRow(int row, const QString &text);
    void applySwitch(int row);
    void writeRow(int row, const QString &text, const QIcon &icon);
    void writeRow(int row, const QString &text);
    [[nodiscard]] QString nodeText(int row);
    [[nodiscard]] QString labelled(int label, const QString &value) const;
    [[nodiscard]] const char *transferSuffix() const;
    [[nodiscard]] QString transferText(const char *suffix);
    [[nodiscard]] QString speedText(quint64 bytesPerSecond) const;
    [[nodiscard]] QString fluxText(quint64 bytes) const;
    [[nodiscard]] QIcon rowIcon(int row);
    void drawSpeeds(unsigned long upSpeed, unsigned long downSpeed);
    [[nodiscard]] bool fetchStoredStatistics();
    void writeLastReset();
    void writePeriodRows();

    [[nodiscard]] SkProgressBar *createMeter(QWidget *parent, const char *name);
    [[nodiscard]] bool addTipAndButtons();
    [[nodiscard]] QStringList storedSettings() const;
    void checkData(const NetInfoData &record);
    void checkTime(const NetInfoData &record);
    void warn(const NetInfoRules::LimitWarnings &stillPending, const char *text);
    void keepPending(const NetInfoRules::LimitWarnings &pending);

    void placeControls();
    void nameControls();
    void selectRecurrence(QRadioButton *radio, QComboBox *own);
    void showPageMessage(const char *text);

    static CNetInfoUIService *m_pInstance;

    std::unique_ptr<Page> m_page;
    std::unique_ptr<TreeRows> m_tree;
    std::unique_ptr<LiveFigures> m_live;
    std::unique_ptr<Limits> m_limits;
    std::unique_ptr<OperatorPage> m_operator;
};
