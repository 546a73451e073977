// Any bytes as a settings file and as its template: what is read keeps the format's promises.

#include "NetInfoSettingRules.h"

#include <QDate>

#include <cstdint>
#include <cstdlib>

using namespace NetInfoRules;

namespace {

constexpr int kLimit = 1024; // as kSettingFileLimit, but often reached

void require(bool condition)
{
    if (!condition)
        std::abort();
}

void requireWholeLines(const QByteArray &content, const QByteArray &head)
{
    require(content.startsWith(head) && head.size() <= kLimit);
    require(head.size() == content.size() || head.isEmpty() || head.endsWith('\n'));
    require(content.size() > kLimit || head.size() == content.size());
    // Nothing that would still fit is left out.
    const auto next = content.indexOf('\n', head.size());
    require(head.size() == content.size() || next < 0 || next >= kLimit);
}

void requireValues(const QByteArray &content, const QList<QString> &values)
{
    const int lines = int(content.count('\n')) + 1;
    require(values.size() < lines && values.size() >= lines - 2);
    for (const QString &value : values)
        require(!value.contains(QLatin1Char('=')) && !value.contains(QLatin1Char('\n')));
}

void requireRoundTrip(const QList<QString> &values)
{
    const QList<QString> again = settingValues(settingFile(values));
    require(again.size() == kSettingCount);
    for (int i = 0; i < kSettingCount; ++i)
        require(again.at(i) == values.value(i));
}

//! A first file reads as its template does, with the three start values behind.
void requireFirstFile(const QByteArray &settingTemplate)
{
    const QList<QString> before = settingValues(settingTemplate);
    const QList<QString> after
        = settingValues(firstSettingFile(settingTemplate, QDate(2024, 3, 7)));
    const QList<QString> start
        = { QLatin1String("07-03-2024"), QLatin1String("0"), QLatin1String("0") };
    // Without any line in the template the date stands on the first line, which is not read.
    require(after == before + start || (before.isEmpty() && after == start.mid(1)));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray content(reinterpret_cast<const char *>(data), int(size));
    const QByteArray head = linesWithin(content, kLimit);
    requireWholeLines(content, head);
    const QList<QString> values = settingValues(head);
    requireValues(head, values);
    requireRoundTrip(values);
    requireFirstFile(head);
    (void)isSettingText(content, kLimit);
    return 0;
}
