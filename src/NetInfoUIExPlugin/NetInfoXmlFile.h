#pragma once
// What the readers of the plug-in's XML files share.

#include <QLatin1String>
#include <QString>
#include <QXmlStreamReader>

namespace NetInfoXml {

//! Results of reading a file.
enum Result { Success = 0, FileMissing = 3, ReadError = 6, NoReader = 13, CannotOpen = 25 };

//! The value of the current element's attribute \a name; empty when it has none.
[[nodiscard]] inline QString attribute(const QXmlStreamReader &reader, const char *name)
{
    return reader.attributes().value(QLatin1String(name)).toString();
}

} // namespace NetInfoXml
