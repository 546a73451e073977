#include "NetInfoConfigParse.h"

#include <host/CommonUtils.h>

#include <QFile>
#include <QXmlStreamReader>

#include <new>

#include "NetInfoLog.h"
#include "NetInfoXmlFile.h"

using NetInfoXml::attribute;

namespace {

constexpr char kSource[] = "../../src/NetInfoUIExPlugin/NetInfoConfigParse.cpp";

constexpr const char *kSections[]
    = { "fluxunit", "speedunit", "format", "function", "Limit", "Color" };

[[nodiscard]] bool isSection(const QXmlStreamReader &reader)
{
    for (const char *section : kSections) {
        if (reader.name() == QLatin1String(section))
            return true;
    }
    return false;
}

[[nodiscard]] NetInfoProgressColor progressColor(const QXmlStreamReader &reader)
{
    NetInfoProgressColor item;
    item.section = QLatin1String("Color");
    item.name = attribute(reader, "name");
    item.color.setRgb(attribute(reader, "R").toInt(), attribute(reader, "G").toInt(),
                      attribute(reader, "B").toInt(), 255);
    return item;
}

} // namespace

NetInfoConfigParse *NetInfoConfigParse::m_pNetInfoInstance = nullptr;

NetInfoConfigParse *NetInfoConfigParse::GetInstance()
{
    if (!m_pNetInfoInstance)
        m_pNetInfoInstance = new (std::nothrow) NetInfoConfigParse;
    return m_pNetInfoInstance;
}

void NetInfoConfigParse::OnDestroy()
{
    delete m_pNetInfoInstance;
    m_pNetInfoInstance = nullptr;
}

int NetInfoConfigParse::GetSettingsFromXML(QString &group, QString &module,
                                           QVector<NetInfoConfig> &out)
{
    out.clear();
    NETINFO_TRACE("%s : %s: %s: Entered", kSource);

    const QString path = CommonUtils::GetPluginLibraryPath()
        + QLatin1String("/plugins/NetInfoUIExPlugin/") + QLatin1String("NetInfoUIExConfig.xml");
    int result = NetInfoXml::FileMissing;
    if (QFile::exists(path))
        result = readFile(path, group, module, out);
    else
        qWarning("File %s does not exist", qPrintable(path));

    NETINFO_TRACE("%s : %s: %s: Exited", kSource);
    return result;
}

int NetInfoConfigParse::readFile(const QString &path, QString &group, QString &module,
                                 QVector<NetInfoConfig> &out)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        qWarning("Error open file: "); // stands alone, without the path
        return NetInfoXml::CannotOpen;
    }
    QXmlStreamReader reader(&file);
    int result = NetInfoXml::Success;
    if (!reader.device()) {
        qWarning("%s : %s: %s: Stream reader not bind with device", NETINFO_LOG_TIME, kSource,
                 "GetSettingsFromXML");
        result = NetInfoXml::NoReader;
    }
    return readDocument(reader, group, module, out, result);
}

int NetInfoConfigParse::readDocument(QXmlStreamReader &reader, QString &group, QString &module,
                                     QVector<NetInfoConfig> &out, int result)
{
    while (!reader.atEnd()) {
        reader.readNext();
        if (!reader.hasError() && reader.isStartElement()
            && reader.name() == QLatin1String("velqdoc")) {
            reader.readNext();
            result = readGroupInfo(reader, group, module, out);
        }
        if (reader.hasError()) { // also an error that the element scanner stopped at
            qWarning("%s : %s: %s: Read Error: n", NETINFO_LOG_TIME, kSource, "GetSettingsFromXML");
            return NetInfoXml::ReadError;
        }
    }
    return result;
}

int NetInfoConfigParse::readGroupInfo(QXmlStreamReader &reader, QString &group, QString &module,
                                      QVector<NetInfoConfig> &out)
{
    // Start tags alone count: an item belongs to the group, module and section opened last before
    // it.
    QString section;
    QString currentGroup;
    QString currentModule;
    while (!reader.atEnd()) {
        if (reader.isStartElement()) {
            if (reader.name() == QLatin1String("group")) {
                currentGroup = attribute(reader, "name");
            } else if (reader.name() == QLatin1String("module")) {
                currentModule = attribute(reader, "name");
            } else if (isSection(reader)) {
                section = reader.name().toString();
            } else if (reader.name() == QLatin1String("item")) {
                const QStringList context = QStringList()
                    << section << group << currentGroup << module << currentModule;
                parseItem(reader, context, out);
            }
        }
        reader.readNext();
        if (reader.hasError()) {
            qWarning("GroupInfo Read Error %s : %s: %s:", NETINFO_LOG_TIME, kSource,
                     "readGroupInfo");
            return NetInfoXml::ReadError;
        }
    }
    return NetInfoXml::Success;
}

void NetInfoConfigParse::parseItem(QXmlStreamReader &reader, QStringList context,
                                   QVector<NetInfoConfig> &out)
{
    const QString &section = context.at(0);
    const QString &currentModule = context.at(4);
    // Colours and limits are taken from every group and module; this is intended.
    if (section == QLatin1String("Color")) {
        m_progressColors.append(progressColor(reader));
    } else if (section == QLatin1String("Limit")) {
        const NetInfoLimitCfg item = { section, attribute(reader, "name"),
                                       attribute(reader, "value"), attribute(reader, "value1") };
        m_limitCfgs.append(item);
    } else if (context.at(1) == context.at(2) && context.at(3) == currentModule) {
        const NetInfoConfig item = { section,
                                     attribute(reader, "name"),
                                     attribute(reader, "value"),
                                     attribute(reader, "type"),
                                     attribute(reader, "langResID"),
                                     currentModule };
        out.append(item);
    }
}
