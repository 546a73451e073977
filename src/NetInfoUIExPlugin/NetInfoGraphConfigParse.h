#pragma once
// Reader of TrendsCtrlProfile.xml, the trend graph's colours and fonts in the plug-in's folder.

#include <QString>
#include <QVector>

QT_BEGIN_NAMESPACE
class QXmlStreamReader;
QT_END_NAMESPACE

//! One "Color" element.
struct NetInfoColourConfig
{
    QString id;
    QString color; //!< "#", two more characters, six hexadecimal digits; not checked here
};

//! One "Font" element.
struct NetInfoFontConfig
{
    QString id;
    QString family;
    QString style;
    QString size; //!< in pixels; not checked here
};

//! Reads the file anew at each call and keeps nothing. GUI thread only.
class NetInfoGraphConfigParse
{
public:
    //! The single instance; made on first use. Null when there is no memory for it.
    static NetInfoGraphConfigParse *GetInstance();
    //! Deletes the instance.
    static void OnDestroy();

    //! Adds the file's entries to the lists in their order. 0: read to the end; 3: no such file;
    //! 25: the file cannot be opened; 13: no reader; 6: the XML is broken (the lists hold what came
    //! before).
    int GetSettingsFromXML(QVector<NetInfoColourConfig> &colours,
                           QVector<NetInfoFontConfig> &fonts);
    //! Reads the elements after the root's start tag. 0 at the end of the document, 6 on an error.
    int readGroupInfo(QXmlStreamReader &reader, QVector<NetInfoColourConfig> &colours,
                      QVector<NetInfoFontConfig> &fonts);

private:
    [[nodiscard]] int readFile(const QString &path, QVector<NetInfoColourConfig> &colours,
                               QVector<NetInfoFontConfig> &fonts);
    [[nodiscard]] int readDocument(QXmlStreamReader &reader, QVector<NetInfoColourConfig> &colours,
                                   QVector<NetInfoFontConfig> &fonts, int result);

    static NetInfoGraphConfigParse *m_spInstance;
};
