// One run of the program in a scripted month: the plug-in's own controller and settings store on
// the device SDK's own engine and store, with a simulated clock.
//
// limit_segment LIBRARY FOLDER ZONE WEEKDAY DAY FROM TO END
//
// LIBRARY is the host's library path, FOLDER the user's data folder with a separator at its end.
// Weeks begin on WEEKDAY (0: Monday), months on DAY. Runs from FROM to TO (seconds since 1970 UTC,
// TO not included) in quarter hours and prints a line "SECONDS KEY" for each warning. END is
// "close" or "kill".

#include <host/velq_extension.h>

#include <QApplication>
#include <QLabel>
#include <QLoggingCategory>
#include <QPushButton>
#include <QWidget>

#include <array>
#include <csignal>
#include <cstdio>
#include <string>

#include "FakeHost.h"
#include "MonthPlan.h"
#include "NetInfoSettingUILogic.h"
#include "NetInfoUIService.h"
#include "SimulatedSdk.h"

namespace {

struct Warning
{
    _VOLUME_LIMIT_SETTINGS_INDEX flag;
    const char *key;
};

constexpr std::array<Warning, 4> kWarnings = { {
    { VLS_SHOW_DATA_WARN_BEFORE, "IDS_BOX_WARNBEFORE" },
    { VLS_SHOW_DATA_WARN_AFTER, "IDS_BOX_WARNAFTER" },
    { VLS_SHOW_TIME_WARN_BEFORE, "IDS_BOX_TIMEWARNBEFORE" },
    { VLS_SHOW_TIME_WARN_AFTER, "IDS_BOX_TIMEWARNAFTER" },
} };

[[nodiscard]] QWidget *openDialog()
{
    const QWidgetList all = QApplication::topLevelWidgets();
    for (QWidget *one : all) {
        if (one->objectName() == QLatin1String("WarnDlg_ExtendedDlg") && one->isVisible())
            return one;
    }
    return nullptr;
}

//! The text of the open dialog, which is closed by its button; empty without one.
[[nodiscard]] QString takeWarning()
{
    QWidget *const dialog = openDialog();
    if (!dialog)
        return QString();
    const QString text = dialog->findChild<QLabel *>(QLatin1String("WarnDlg_LabelWarn"))->text();
    const auto buttons = dialog->findChildren<QPushButton *>();
    for (QPushButton *button : buttons) {
        if (button->text() == QLatin1String("IDS_BOX_WARNIDOK"))
            button->click();
    }
    return openDialog() ? QStringLiteral("a dialog that stays") : text;
}

//! Prints what the dialog said at \a now, and what a later warning of the same report has replaced.
void report(qint64 now, const std::array<bool, kWarnings.size()> &pendingBefore)
{
    const QString shown = takeWarning();
    bool told = shown.isEmpty();
    for (std::size_t i = 0; i < kWarnings.size(); ++i) {
        const bool pending = NetInfoSettingUILogic::GetInstance()->value(kWarnings[i].flag)
            != QLatin1String("false");
        if (!pendingBefore[i] || pending)
            continue;
        std::printf("%lld %s\n", static_cast<long long>(now), kWarnings[i].key);
        told = told || shown == QLatin1String(kWarnings[i].key);
    }
    if (!told)
        std::printf("%lld unexpected %s\n", static_cast<long long>(now), qPrintable(shown));
}

void runStep(qint64 now)
{
    std::array<bool, kWarnings.size()> pending = {};
    for (std::size_t i = 0; i < kWarnings.size(); ++i)
        pending[i] = NetInfoSettingUILogic::GetInstance()->value(kWarnings[i].flag)
            != QLatin1String("false");
    SimulatedSdk::setNow(now);
    if (MonthPlan::isConnected(QDateTime::fromSecsSinceEpoch(now)))
        SimulatedSdk::flow(MonthPlan::kDownload, MonthPlan::kUpload, MonthPlan::kStep);
    SimulatedSdk::commit();
    SimulatedSdk::tick();
    QApplication::processEvents();
    report(now, pending);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 9)
        return 2;
    QApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QLatin1String("*.debug=false"));
    resetFakeHost();
    fakeHost().libraryPath = QString::fromLocal8Bit(argv[1]);
    fakeHost().userDataDirectory = QString::fromLocal8Bit(argv[2]);
    const qint64 from = std::stoll(argv[6]);
    const qint64 to = std::stoll(argv[7]);
    SimulatedSdk::setNow(from);
    if (!SimulatedSdk::open(std::string(argv[2]) + "velq", argv[3])
        || VELQ_StatisticsSrv_SetPeriodStart(std::stoi(argv[4]), std::stoi(argv[5])) != 0)
        return 3;
    {
        QWidget window;
        window.show();
        CNetInfoUIService::instance()->Init();
        QRect rect(0, 0, 600, 400);
        CNetInfoUIService::instance()->ShowWindow(&window, rect);
        for (qint64 now = from; now < to; now += MonthPlan::kStep)
            runStep(now);
        std::fflush(stdout);
        if (std::string(argv[8]) == "kill")
            std::raise(SIGKILL);
        CNetInfoUIService::Destroy();
    }
    SimulatedSdk::close();
    return 0;
}
