#pragma once
// Reader of NetInfoUIExConfig.xml, the module configuration in the plug-in's folder.

#include <QColor>
#include <QString>
#include <QStringList>
#include <QVector>

#include "NetInfoConfigRecords.h"

QT_BEGIN_NAMESPACE
class QXmlStreamReader;
QT_END_NAMESPACE

//! One item of a "Color" section.
struct NetInfoProgressColor
{
    QString section; //!< always "Color"
    QString name;
    QColor color; //!< invalid when a component is outside 0 to 255
};

//! Reads the file anew at each call. GUI thread only.
class NetInfoConfigParse
{
public:
    //! The single instance; made on first use. Null when there is no memory for it.
    static NetInfoConfigParse *GetInstance();
    //! Deletes the instance.
    static void OnDestroy();

    //! Replaces \a out by the items of \a group and \a module. 0: read to the end; 3: no such file;
    //! 25: the file cannot be opened; 13: no reader; 6: the XML is broken (\a out holds what came
    //! before). Limit and colour items of all groups and modules are added to the lists below.
    int GetSettingsFromXML(QString &group, QString &module, QVector<NetInfoConfig> &out);
    //! Reads the elements after the root's start tag. 0 at the end of the document, 6 on an error.
    int readGroupInfo(QXmlStreamReader &reader, QString &group, QString &module,
                      QVector<NetInfoConfig> &out);
    //! Reads one "item" start tag. \a context: section, requested group, current group, requested
    //! module, current module.
    void parseItem(QXmlStreamReader &reader, QStringList context, QVector<NetInfoConfig> &out);

    // Never emptied: each call adds the file's items again.
    QVector<NetInfoProgressColor> m_progressColors;
    QVector<NetInfoLimitCfg> m_limitCfgs;

private:
    [[nodiscard]] int readFile(const QString &path, QString &group, QString &module,
                               QVector<NetInfoConfig> &out);
    [[nodiscard]] int readDocument(QXmlStreamReader &reader, QString &group, QString &module,
                                   QVector<NetInfoConfig> &out, int result);

    static NetInfoConfigParse *m_pNetInfoInstance;
};
