#include "NetInfoGraphConfigParse.h"

#include <host/CommonUtils.h>

#include <QFile>
#include <QXmlStreamReader>

#include <new>

#include "NetInfoLog.h"
#include "NetInfoXmlFile.h"

using NetInfoXml::attribute;

namespace {

constexpr char kSource[] = "../../src/NetInfoUIExPlugin/NetInfoGraphConfigParse.cpp";

} // namespace

NetInfoGraphConfigParse *NetInfoGraphConfigParse::m_spInstance = nullptr;

NetInfoGraphConfigParse *NetInfoGraphConfigParse::GetInstance()
{
    if (!m_spInstance)
        m_spInstance = new (std::nothrow) NetInfoGraphConfigParse;
    return m_spInstance;
}

void NetInfoGraphConfigParse::OnDestroy()
{
    delete m_spInstance;
    m_spInstance = nullptr;
}

int NetInfoGraphConfigParse::GetSettingsFromXML(QVector<NetInfoColourConfig> &colours,
                                                QVector<NetInfoFontConfig> &fonts)
{
    NETINFO_TRACE("%s : %s: %s: Entered", kSource);
    const QString path = CommonUtils::GetPluginLibraryPath()
        + QLatin1String("/plugins/NetInfoUIExPlugin/") + QLatin1String("TrendsCtrlProfile.xml");
    int result = NetInfoXml::FileMissing;
    if (QFile::exists(path))
        result = readFile(path, colours, fonts);
    else
        qWarning("File %s does not exist", qPrintable(path));
    NETINFO_TRACE("%s : %s: %s: Exit", kSource);
    return result;
}

int NetInfoGraphConfigParse::readFile(const QString &path, QVector<NetInfoColourConfig> &colours,
                                      QVector<NetInfoFontConfig> &fonts)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        qWarning("open file Error : "); // stands alone, without the path
        return NetInfoXml::CannotOpen;
    }
    QXmlStreamReader reader(&file);
    int result = NetInfoXml::Success;
    if (!reader.device()) {
        qWarning(" %s : %s: %s: not bind with device Stream reader", NETINFO_LOG_TIME, kSource,
                 "GetSettingsFromXML");
        result = NetInfoXml::NoReader;
    }
    return readDocument(reader, colours, fonts, result);
}

int NetInfoGraphConfigParse::readDocument(QXmlStreamReader &reader,
                                          QVector<NetInfoColourConfig> &colours,
                                          QVector<NetInfoFontConfig> &fonts, int result)
{
    while (!reader.atEnd()) {
        reader.readNext();
        if (!reader.hasError() && reader.isStartElement()
            && reader.name() == QLatin1String("TrendsCtrlProfile")) {
            reader.readNext();
            result = readGroupInfo(reader, colours, fonts);
        }
        if (reader.hasError()) { // also an error that the element scanner stopped at
            qWarning("%s : %s: %s: Read Fle Error: n", NETINFO_LOG_TIME, kSource,
                     "GetSettingsFromXML");
            return NetInfoXml::ReadError;
        }
    }
    return result;
}

int NetInfoGraphConfigParse::readGroupInfo(QXmlStreamReader &reader,
                                           QVector<NetInfoColourConfig> &colours,
                                           QVector<NetInfoFontConfig> &fonts)
{
    NETINFO_TRACE("%s : %s: %s: Entered", kSource);
    int result = NetInfoXml::Success;
    while (!reader.atEnd()) {
        if (reader.isStartElement() && reader.name() == QLatin1String("Color")) {
            const NetInfoColourConfig colour
                = { attribute(reader, "id"), attribute(reader, "color") };
            colours.append(colour);
        } else if (reader.isStartElement() && reader.name() == QLatin1String("Font")) {
            const NetInfoFontConfig font
                = { attribute(reader, "id"), attribute(reader, "family"),
                    attribute(reader, "style"), attribute(reader, "size") };
            fonts.append(font);
        }
        reader.readNext();
        if (reader.hasError()) {
            qWarning("GroupInfo Read Error %s : %s: %s:", NETINFO_LOG_TIME, kSource,
                     "readGroupInfo");
            result = NetInfoXml::ReadError;
            break;
        }
    }
    NETINFO_TRACE("%s : %s: %s: Exit", kSource);
    return result;
}
