#include "ShippedTexts.h"

#include <QFile>
#include <QXmlStreamReader>

QHash<QString, QString> shippedTexts(const QString &code)
{
    QFile file(QStringLiteral(NETINFO_SHIPPED_TEXTS "/skylet_%1.ts").arg(code));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(file.fileName()));
    QHash<QString, QString> texts;
    QString key;
    for (QXmlStreamReader reader(&file); !reader.atEnd(); reader.readNext()) {
        if (!reader.isStartElement())
            continue;
        if (reader.name() == QLatin1String("source"))
            key = reader.readElementText();
        else if (reader.name() == QLatin1String("translation"))
            texts.insert(key, reader.readElementText());
    }
    return texts;
}
