// Opening the settings page for the first time beside an empty dialog with as many bare widgets of
// the same classes: no texts, no names, one plain layout. Both from nothing to the first picture.

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLoggingCategory>
#include <QMap>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <host/ExtendLineEdit.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>

#include "BenchRatios.h"
#include "DateEdit.h"
#include "FakeSdk.h"
#include "HostPaths.h"
#include "Languages.h"
#include "NetInfoUIService.h"

namespace {

constexpr QSize kSize(520, 400);

//! Sees the first picture of a widget.
class PaintWatch : public QObject
{
public:
    explicit PaintWatch(QWidget *widget)
    {
        widget->installEventFilter(this);
    }
    void wait()
    {
        while (!m_isPainted)
            QApplication::processEvents();
        QApplication::processEvents();
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        m_isPainted = m_isPainted || event->type() == QEvent::Paint;
        return false;
    }

private:
    bool m_isPainted = false;
};

void open(QDialog &dialog)
{
    dialog.resize(kSize);
    PaintWatch watch(&dialog);
    dialog.show();
    watch.wait();
}

void openSettings(QDialog &dialog)
{
    QRect rect(QPoint(), kSize);
    CNetInfoUIService::instance()->ShowSettingDialog(&dialog, rect);
    open(dialog);
}

template <typename Widget>
void addBare(QVBoxLayout *layout, int count)
{
    for (int i = 0; i < count; ++i)
        layout->addWidget(new Widget);
}

void openBare(QDialog &dialog)
{
    QVBoxLayout *const layout = new QVBoxLayout(&dialog);
    addBare<QWidget>(layout, 2);
    addBare<QGroupBox>(layout, 4);
    addBare<QLabel>(layout, 8);
    addBare<DateEdit>(layout, 1);
    addBare<QCheckBox>(layout, 5);
    addBare<QRadioButton>(layout, 3);
    addBare<QComboBox>(layout, 2);
    addBare<ExtendLineEdit>(layout, 2);
    open(dialog);
}

//! A controller as the host has it before its settings are opened.
void makeController()
{
    CNetInfoUIService::Destroy();
    CNetInfoUIService::instance()->Init();
}

QMap<QString, int> widgetsIn(const QDialog &dialog)
{
    QMap<QString, int> counts;
    const QList<QWidget *> widgets = dialog.findChildren<QWidget *>();
    for (const QWidget *widget : widgets)
        ++counts[QLatin1String(widget->metaObject()->className())];
    return counts;
}

void settingsPage(benchmark::State &state)
{
    for (auto _ : state) {
        state.PauseTiming();
        makeController();
        std::unique_ptr<QDialog> dialog(new QDialog);
        state.ResumeTiming();
        openSettings(*dialog);
        state.PauseTiming();
        dialog.reset(); // with the page
        CNetInfoUIService::Destroy();
        state.ResumeTiming();
    }
}
BENCHMARK(settingsPage)->Unit(benchmark::kMicrosecond);

void bareWidgets(benchmark::State &state)
{
    for (auto _ : state) {
        state.PauseTiming();
        std::unique_ptr<QDialog> dialog(new QDialog);
        state.ResumeTiming();
        openBare(*dialog);
        state.PauseTiming();
        dialog.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(bareWidgets)->Unit(benchmark::kMicrosecond);

//! Both have the same widgets, else the comparison is not worth its name.
bool isComparable()
{
    makeController();
    QDialog settings;
    QDialog bare;
    openSettings(settings);
    openBare(bare);
    const QMap<QString, int> counts = widgetsIn(settings);
    for (auto it = counts.begin(); it != counts.end(); ++it)
        std::printf("%3d %s\n", it.value(), qPrintable(it.key()));
    return counts == widgetsIn(bare);
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    // As the host runs it, and without the offscreen platform's remark on every dialog.
    QLoggingCategory::setFilterRules(QLatin1String("*.debug=false\ndefault.warning=false"));
    resetFakeSdk();
    const QTemporaryDir user;
    HostPaths::setLibraryPath(QLatin1String(NETINFO_BENCH_LIBRARY_PATH));
    HostPaths::setUserDataDirectory(user.path());
    const Languages languages(QLatin1String(NETINFO_BENCH_LANG));
    if (!languages.hasEnglish())
        qFatal("no texts in %s", NETINFO_BENCH_LANG);
    if (!isComparable())
        qFatal("the settings page has other widgets than the bare dialog");
    CNetInfoUIService::Destroy();
    return runBenchmarks(
        argc, argv,
        { { "settings page / bare widgets, first opening", "settingsPage", "bareWidgets", 0, 3 } });
}
