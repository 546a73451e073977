#include "LimitTest.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>

#include "NetInfoSettingUILogic.h"

namespace {

constexpr char kDialog[] = "WarnDlg_ExtendedDlg";

QString textOf(const QObject *dialog)
{
    const auto *const label = dialog->findChild<QLabel *>(QStringLiteral("WarnDlg_LabelWarn"));
    return label ? label->text() : QString();
}

QStringList flagsOf(const NetInfoSettingUILogic &store)
{
    QStringList values;
    for (int i = VLS_SHOW_DATA_WARN_AFTER; i <= VLS_SHOW_TIME_WARN_AFTER; ++i)
        values << store.value(i);
    return values;
}

QStringList flagsOfFile()
{
    NetInfoSettingUILogic store;
    store.GetUseLimitSetting();
    return flagsOf(store);
}

} // namespace

void LimitTest::setLimits()
{
    set(VLS_CHK_VOLUME, { "true", "true", "100", "2" });
}

void LimitTest::setPeriod(Period period)
{
    const auto text = [](bool on) { return on ? QStringLiteral("true") : QStringLiteral("false"); };
    set(VLS_CHK_RECURRENCE,
        { text(period != Period::History), text(period == Period::Daily),
          text(period == Period::Weekly), text(period == Period::Monthly) });
}

QByteArray LimitTest::limitItems()
{
    return "<Limit><item name=\"DATAVOLUMELIMIT\" value=\"0\" value1=\"20\"/>"
           "<item name=\"TIMEVOLUMELIMIT\" value=\"0\" value1=\"1800\"/></Limit>"
           "<Color><item name=\"NoWarningColor\" R=\"1\" G=\"2\" B=\"3\"/>"
           "<item name=\"BeforeWarningColor\" R=\"4\" G=\"5\" B=\"6\"/>"
           "<item name=\"ReachedWarningColor\" R=\"7\" G=\"8\" B=\"9\"/></Color>";
}

CNetInfoUIService *LimitTest::startWith(const QByteArray &items, const QStringList &off)
{
    if (fakeHost().userDataDirectory.isEmpty()) {
        m_userFolder.reset(new QTemporaryDir);
        fakeHost().userDataDirectory = m_userFolder->path() + QLatin1Char('/');
        NetInfoSettingUILogic::GetInstance()->saveUseLimitSetting();
    }
    QByteArray switches;
    for (const QString &name : PluginFolder::allSwitches()) {
        if (!off.contains(name))
            switches += "<item name=\"" + name.toUtf8() + "\" value=\"true\"/>";
    }
    m_folder->writeConfig(PluginFolder::document(
        "<function>" + switches
        + "</function><fluxunit><item name=\"B\" value=\"1\" type=\"1\"/></fluxunit>" + items));
    CNetInfoUIService *const service = CNetInfoUIService::instance();
    if (!service->Init())
        qFatal("Init failed");
    m_log->takeLines();
    return service;
}

CNetInfoUIService *LimitTest::startLimits()
{
    return startWith(limitItems());
}

void LimitTest::use(Period period, double megabytes, qint64 seconds)
{
    FakeReport &figures
        = period == Period::History ? fakeSdk().history : fakeSdk().reports[int(period)];
    const auto bytes = static_cast<quint64>(megabytes * 1048576);
    figures.upload = bytes / 4;
    figures.download = bytes - figures.upload;
    figures.time = seconds;
}

void LimitTest::report()
{
    sendStatisticsEvent(true);
}

SkProgressBar *LimitTest::dataMeter()
{
    return qobject_cast<SkProgressBar *>(widget("NetInfoUIPlugin_ProgressDatavolume"));
}

SkProgressBar *LimitTest::timeMeter()
{
    return qobject_cast<SkProgressBar *>(widget("NetInfoUIPlugin_ProgressVolume"));
}

QString LimitTest::warning()
{
    const QWidget *const dialog = widget(kDialog);
    return dialog && dialog->isVisible() ? textOf(dialog) : QString();
}

void LimitTest::closeWarning()
{
    if (QWidget *const dialog = widget(kDialog))
        dialog->close();
}

QStringList LimitTest::savedFlags()
{
    return flagsOfFile();
}

QStringList LimitTest::flags()
{
    return flagsOf(*NetInfoSettingUILogic::GetInstance());
}

QStringList LimitTest::approach(Period period)
{
    QStringList texts;
    const struct
    {
        double megabytes;
        qint64 seconds;
    } steps[] = { { kFineMb, kFineSeconds },
                  { kNearMb, kFineSeconds },
                  { kNearMb, kNearSeconds },
                  { kReachedMb, kNearSeconds },
                  { kReachedMb, kReachedSeconds } };
    for (const auto &step : steps) {
        use(period, step.megabytes, step.seconds);
        for (int i = 0; i < 3; ++i) {
            const WarningWatch watch;
            report();
            texts << watch.texts;
            closeWarning();
        }
    }
    return texts;
}

void LimitTest::passTime(qint64 seconds)
{
    use(Period::Monthly, 0, seconds);
    report();
}

WarningWatch::WarningWatch()
{
    qApp->installEventFilter(this);
}

WarningWatch::~WarningWatch()
{
    qApp->removeEventFilter(this);
}

bool WarningWatch::eventFilter(QObject *watched, QEvent *event)
{
    if (watched->objectName() != QLatin1String(kDialog))
        return false;
    if (event->type() == QEvent::Show && !m_open) { // some Qt versions tell an open dialog again
        texts << textOf(watched);
        savedFlags << flagsOfFile();
    }
    if (event->type() == QEvent::Show || event->type() == QEvent::Hide)
        m_open = event->type() == QEvent::Show;
    return false;
}
