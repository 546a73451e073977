// Saving the usage limits beside what any safe save of the same bytes costs: write, fsync and
// rename in the same folder. Wall-clock times, because the disk is what a user waits for; the
// folder's own fsync after the rename is in both. Run it in a folder on the disk that is meant.

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

#include "BenchRatios.h"
#include "HostPaths.h"
#include "NetInfoSettingRules.h"
#include "NetInfoSettingUILogic.h"

namespace {

constexpr char kFolder[] = "user";
constexpr char kFile[] = "user/DataUsageLimit.ini";
constexpr char kRawFile[] = "user/raw.ini";
constexpr char kRawTemporary[] = "user/temporary.ini";
constexpr mode_t kMode = 0644;

QList<QString> settings(int step)
{
    QList<QString> values;
    for (int i = 0; i < NetInfoRules::kSettingCount; ++i)
        values.append(QLatin1String(i % 2 == 0 ? "true" : "false"));
    values[VLS_SIZE_VOLUME] = QString::number(100000 + step % 100000);
    return values;
}

bool sync(const char *path, int flags)
{
    const int file = open(path, flags | O_CLOEXEC);
    return file >= 0 && fsync(file) == 0 && close(file) == 0;
}

bool replaceRaw(const QByteArray &bytes)
{
    const int file = open(kRawTemporary, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kMode);
    return file >= 0 && write(file, bytes.constData(), size_t(bytes.size())) == bytes.size()
        && fsync(file) == 0 && close(file) == 0 && rename(kRawTemporary, kRawFile) == 0
        && sync(kFolder, O_RDONLY | O_DIRECTORY);
}

void saveSettings(benchmark::State &state)
{
    NetInfoSettingUILogic store;
    int step = 0;
    for (int i = 0; i < NetInfoRules::kSettingCount; ++i)
        store.updateUseLimitSetting(i, settings(0).at(i));
    for (auto _ : state) {
        store.updateUseLimitSetting(VLS_SIZE_VOLUME, settings(++step).at(VLS_SIZE_VOLUME));
        if (!store.saveUseLimitSetting())
            state.SkipWithError("no user data folder");
    }
    QFile file { QLatin1String(kFile) }; // a save that failed is silent
    if (!file.open(QIODevice::ReadOnly)
        || file.readAll() != NetInfoRules::settingFile(settings(step)))
        state.SkipWithError("not saved");
}

void rawReplace(benchmark::State &state)
{
    int step = 0;
    for (auto _ : state) {
        if (!replaceRaw(NetInfoRules::settingFile(settings(++step))))
            state.SkipWithError("not written");
    }
}

BENCHMARK(saveSettings)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(rawReplace)->Unit(benchmark::kMicrosecond)->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QLatin1String("*.debug=false")); // as the host runs it
    const QTemporaryDir root(QDir::currentPath() + QLatin1String("/bench_settings_save"));
    if (!root.isValid() || !QDir::setCurrent(root.path()) || !QDir().mkdir(QLatin1String(kFolder)))
        qFatal("no folder here");
    HostPaths::setUserDataDirectory(root.path() + QLatin1Char('/') + QLatin1String(kFolder));
    std::printf("In %s, wall-clock times, the folder's fsync in both\n", qPrintable(root.path()));
    return runBenchmarks(argc, argv,
                         { { "save / raw write, fsync, rename and folder fsync", "saveSettings",
                             "rawReplace", 0, 1.3 } });
}
