#include <host/Change.h>

#include <QCoreApplication>

QString Change::tr(const QString &context, const QString &key)
{
    // The translation files use the text identifiers as their source texts (see Languages.h).
    return QCoreApplication::translate(context.toUtf8().constData(), key.toUtf8().constData());
}
