#pragma once
// What the controller keeps, grouped by concern. Shared by its source files alone.

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHash>
#include <QIcon>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QRect>
#include <QSplitter>
#include <QTime>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QVector>
#include <QWidget>

#include <host/ExtendLineEdit.h>
#include <host/TagUnits.h>

#include "NetInfoGraphWidget.h"
#include "NetInfoLimitRules.h"
#include "NetInfoOperatorPage.h"
#include "NetInfoSettingUILogic.h"
#include "NetInfoTextMeter.h"
#include "NetInfoTreeRules.h"
#include "NetInfoUILogic.h"
#include "NetInfoUIService.h"
#include "SkProgressBar.h"
#include "WarnPrompt.h"

//! The source path in the trace lines of all the controller's files.
#define NETINFO_SERVICE_SOURCE "../../src/NetInfoUIExPlugin/NetInfoUIService.cpp"

//! The translations' context, and the module's name for the host's formatters.
#define NETINFO_MODULE_NAME "NetInfoUIExPlugin"

//! The plug-in that dials the connection; where it is, the transfer node names the connect type.
#define NETINFO_DIALUP_PLUGIN "D0B83E56-19F2-4C6A-B7E4-05A9C31D8F62"

//! Writes the null line of the caller and leaves it when \a pointer is null.
#define NETINFO_REQUIRE(pointer, leave)                                                            \
    if (!(pointer)) {                                                                              \
        NETINFO_TRACE_NULL(NETINFO_SERVICE_SOURCE);                                                \
        leave;                                                                                     \
    }

//! Nodes and rows of the statistics tree.
enum NetInfoTreeRow {
    TransferNode,
    TimeRow,
    UploadNode,
    UploadSpeedRow,
    UploadDataRow,
    DownloadNode,
    DownloadSpeedRow,
    DownloadDataRow,
    StatisticsNode,
    LastResetRow,
    DailyNode,
    DailyUploadRow,
    DailyDownloadRow,
    MonthlyNode,
    MonthlyUploadRow,
    MonthlyDownloadRow,
    YearlyNode,
    YearlyUploadRow,
    YearlyDownloadRow,
    NotesItem,
    TreeRowCount
};

//! Captions of the rows, translated once for each language.
enum NetInfoTreeLabel {
    SpeedLabel,
    DataLabel,
    TimeLabel,
    UploadedLabel,
    DownloadedLabel,
    LabelCount
};

//! The pages and what they are made of. Widgets die with the host's windows.
struct CNetInfoUIService::Page
{
    QPointer<QWidget> mainWidget; // the normal page: kept hidden by ShowWindow
    QPointer<QSplitter> splitter;
    QPointer<QWidget> leftArea;
    QPointer<QVBoxLayout> leftLayout;
    QPointer<GraphWidget> graph;
    QPointer<NetInfoOperatorPage> operatorPage;
    QPointer<QWidget> content; // what the operator page scrolls
    QPointer<QWidget> contentRow;
    QPointer<QLabel> caption;
    QPointer<NetInfoUILogic> source; // a singleton, not owned
    NetInfoSettingsPage *settings = nullptr; // not owned
    bool settingsActive = false;
    bool dataLimitEnabled = false;
    bool timeLimitEnabled = false;
    QPointer<QWidget> hostParent; // of the last ShowWindow, with its rectangle
    QRect hostRect;
    QHash<QString, QIcon> icons; // by path, for one layout direction
    Qt::LayoutDirection iconDirection = Qt::LeftToRight;
};

//! The statistics tree; items are the tree's and null when it is gone.
struct CNetInfoUIService::TreeRows
{
    QPointer<QTreeWidget> tree;
    QTreeWidgetItem *items[TreeRowCount] = {};
    QString labels[LabelCount];
    QVector<TagUnits> fluxUnits;
    QVector<TagUnits> speedUnits;
    int firstColumnWidth = NetInfoRules::kFirstColumnWidth;
    int widestRequired = 0;
    NetInfoTextMeter meter;
    QPointer<QAction> resetAll;
    QPointer<QAction> expandAll;
    QPointer<QAction> collapseAll;
    bool menuOpen = false;
    bool resetPicked = false; // in the open menu; asked when it has closed
};

//! The last reported and fetched figures.
struct CNetInfoUIService::LiveFigures
{
    unsigned long upSpeed = 0;
    unsigned long downSpeed = 0;
    quint64 upData = 0;
    quint64 downData = 0;
    QString time = QLatin1String("00:00:00");
    QString lastReset; // in the system's short form; empty: never known
    NetInfoData stored[4] = {}; // by _enNetInfoType
    NetInfoData history = {};
    QTime periodStart; // invalid: no start date is set
};

//! The limit area of the normal page, and what the limits are measured by.
struct CNetInfoUIService::Limits
{
    QPointer<QWidget> area;
    QPointer<QVBoxLayout> layout;
    QPointer<QLabel> dataCaption;
    QPointer<SkProgressBar> dataMeter; // on the operator page once that is built
    QPointer<QLabel> timeCaption;
    QPointer<SkProgressBar> timeMeter;
    QPointer<QLabel> tip;
    QPointer<QPushButton> reset;
    QPointer<QPushButton> setLimit;
    std::unique_ptr<WarnPrompt> prompt;
    NetInfoSettingUILogic *store = nullptr; // a singleton, not owned
    NetInfoRules::LimitSettings settings;
    NetInfoRules::LimitWarning dataWarning;
    NetInfoRules::LimitWarning timeWarning;
    bool dataPercentageReached = false;
    bool timePercentageReached = false;
    bool startInFuture = false;
    NetInfoData previous[4] = {}; // by _enNetInfoType, of the report before
    bool hasPrevious[4] = {};
};

//! The controls of the operator page.
struct CNetInfoUIService::OperatorPage
{
    QPointer<QGroupBox> recurrence;
    QPointer<QRadioButton> daily;
    QPointer<QRadioButton> weekly;
    QPointer<QRadioButton> monthly;
    QPointer<QComboBox> weekday; // from Monday
    QPointer<QComboBox> day; // of the month
    QPointer<QGroupBox> dataLimit;
    QPointer<QCheckBox> dataSwitch;
    QPointer<ExtendLineEdit> dataSize;
    QPointer<QLabel> unit;
    QPointer<QPushButton> save;
    QPointer<QPushButton> clear;
    QString chosenWeekday; // index as text; empty: not chosen
    QString chosenDay;
};
