#include "Console.h"
#include "MainWindow.h"
#include "PeriodStartWatch.h"
#include "PluginStage.h"
#include "Session.h"
#include "StatusLine.h"
#include "UnixSignals.h"

#include <host/CommonUtils.h>

#include <QApplication>
#include <QFileInfo>
#include <QPixmap>
#include <QTimer>

static constexpr int kHeadlessSeconds = 5;
static constexpr int kPictureSeconds = 3;
static constexpr int kGraceSeconds = 3; // for an SDK whose figures do not come

int Session::run()
{
    if (m_headless && m_window->stage()->isEmpty()) {
        printError(QStringLiteral("No plug-in is loaded; there is nothing to run."));
        return kExitNoPlugin;
    }
    UnixSignals signalsToEnd;
    connect(&signalsToEnd, &UnixSignals::endRequested, m_window.get(), &QWidget::close);
    m_window->show();
    if (m_headless)
        printLine(ConsoleReport::heading());
    scheduleEnd();
    const int status = QApplication::exec();
    return status != 0 ? status : finishRun();
}

// Without a display the samples are counted, one a second, so that as many lines appear as were
// asked for; the timer is then only for the case that none come.
void Session::scheduleEnd()
{
    int seconds = m_options.seconds.value_or(0);
    if (m_headless)
        seconds = samplesToPrint() + kGraceSeconds;
    else if (seconds == 0 && !m_options.screenshot.isEmpty())
        seconds = kPictureSeconds;
    if (seconds > 0)
        QTimer::singleShot(seconds * 1000, this, [] { QCoreApplication::quit(); });
}

int Session::samplesToPrint() const
{
    return m_options.seconds.value_or(kHeadlessSeconds);
}

void Session::onSample(const LiveSample &sample)
{
    m_window->statusLine()->setSample(sample);
    m_window->statusLine()->setStoreProblem(LiveFeed::storeProblem());
    m_window->setConnected(sample.connected);
    m_periodStart->check();
    if (!m_headless || m_report.count() >= samplesToPrint())
        return;
    const QStringList lines = m_report.lines(sample);
    for (const QString &line : lines)
        printLine(line);
    if (m_report.count()
        == samplesToPrint()) // after what is queued: the plug-in shows this sample too
        QTimer::singleShot(0, this, [] { QCoreApplication::quit(); });
}

// Nothing is remembered of a run that only makes a picture.
void Session::remember()
{
    if (m_headless || !m_options.screenshot.isEmpty())
        return;
    m_settings.setView(m_window->view());
    m_settings.setGeometry(m_window->saveGeometry());
}

int Session::finishRun()
{
    if (m_headless) {
        const QStringList lines = m_report.summary();
        for (const QString &line : lines)
            printLine(line);
        const QString problem = LiveFeed::storeProblem();
        if (!problem.isEmpty())
            printError(problem);
    }
    const bool wantsPicture = m_headless || !m_options.screenshot.isEmpty();
    return wantsPicture && !savePicture() ? kExitFailure : 0;
}

bool Session::savePicture()
{
    QString file = m_options.screenshot;
    if (file.isEmpty()) {
        const QString folder = CommonUtils::getUserDataDirectory();
        if (folder.isEmpty()) {
            printError(QStringLiteral("There is no folder for the picture; use --screenshot."));
            return false;
        }
        file = folder + QLatin1String("skylet-screenshot.png");
    }
    const bool hasSuffix = !QFileInfo(file).suffix().isEmpty();
    if (!m_window->grab().save(file, hasSuffix ? nullptr : "png")) {
        printError(QStringLiteral("The picture %1 cannot be written.").arg(file));
        return false;
    }
    printLine(QStringLiteral("Picture: %1").arg(file));
    return true;
}
