#include "PluginFolder.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QStringList>

#include "FakeHost.h"

namespace {

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

QByteArray switchItems(const QStringList &names, const char *value)
{
    QByteArray items;
    for (const QString &name : names)
        items += "<item name=\"" + name.toUtf8() + "\" value=\"" + value + "\"/>";
    return items;
}

} // namespace

PluginFolder::PluginFolder()
{
    QDir().mkpath(m_root.path() + QStringLiteral("/plugins/NetInfoUIExPlugin"));
    fakeHost().libraryPath = m_root.path();
    writeProfile(profile({ "#FF000000", "#FF010101", "#FFFFFF00", "#FF0000FF", "#FF808080" }));
}

QString PluginFolder::path() const
{
    return m_root.path() + QStringLiteral("/plugins/NetInfoUIExPlugin/");
}

QString PluginFolder::configPath() const
{
    return path() + QStringLiteral("NetInfoUIExConfig.xml");
}

QString PluginFolder::profilePath() const
{
    return path() + QStringLiteral("TrendsCtrlProfile.xml");
}

void PluginFolder::useShippedFiles()
{
    const QDir shipped(QStringLiteral(NETINFO_SHIPPED_DATA));
    const QStringList names = QStringList()
        << QStringLiteral("NetInfoUIExConfig.xml") << QStringLiteral("TrendsCtrlProfile.xml")
        << QStringLiteral("DataUsageLimit.ini")
        << shipped.entryList(QStringList() << QStringLiteral("Icon_0?"));
    for (const QString &name : names) {
        QFile::remove(path() + name);
        if (!QFile::copy(shipped.filePath(name), path() + name))
            qFatal("cannot copy %s", qPrintable(name));
    }
}

void PluginFolder::writeConfig(const QByteArray &xml)
{
    writeFile(configPath(), xml);
}

void PluginFolder::writeProfile(const QByteArray &xml)
{
    writeFile(profilePath(), xml);
}

QByteArray PluginFolder::profile(const QList<QByteArray> &colours, const QByteArray &size)
{
    QByteArray entries;
    for (const QByteArray &colour : colours)
        entries += "<Color id=\"c\" color=\"" + colour + "\"/>";
    for (int i = 0; i < 3; ++i)
        entries += "<Font id=\"f\" family=\"Serif\" style=\"bold\" size=\"13\"/>";
    entries += "<Font id=\"f\" family=\"Sans Serif\" style=\"bold\" size=\"" + size + "\"/>";
    return "<TrendsCtrlProfile>" + entries + "</TrendsCtrlProfile>";
}

void PluginFolder::writeSwitches(const QStringList &on, const QStringList &off)
{
    writeConfig(document("<function>" + switchItems(on, "true") + switchItems(off, "false")
                         + "</function>"
                           "<fluxunit><item name=\"B\" value=\"1\" type=\"1\"/></fluxunit>"
                           "<speedunit><item name=\"Bps\" value=\"1\" type=\"1\"/></speedunit>"));
}

void PluginFolder::writeIcon(const QString &name, const QColor &left, const QColor &right)
{
    QImage image(16, 16, QImage::Format_ARGB32);
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x)
            image.setPixelColor(x, y, x < 8 ? left : right);
    }
    if (!image.save(path() + name, "PNG"))
        qFatal("cannot write %s", qPrintable(name));
}

QStringList PluginFolder::allSwitches()
{
    return QStringList { QStringLiteral("SHOWGRAPH"),           QStringLiteral("STATISTICS"),
                         QStringLiteral("STATISTICSDAILY"),     QStringLiteral("STATISTICSMONTHLY"),
                         QStringLiteral("STATISTICSYEARLY"),    QStringLiteral("STATISTICSNOTES"),
                         QStringLiteral("SHOWRESETSTATISTICS"), QStringLiteral("TRANSFER"),
                         QStringLiteral("TRANSFERTIME"),        QStringLiteral("TRANSFERUPLOAD"),
                         QStringLiteral("TRANSFERDOWNLOAD"),    QStringLiteral("DATAVOLUMELIMIT"),
                         QStringLiteral("TIMEVOLUMELIMIT") };
}

QByteArray PluginFolder::document(const QByteArray &content)
{
    return "<velqdoc><group name=\"customize\"><module name=\"common\">" + content
        + "</module></group></velqdoc>";
}
