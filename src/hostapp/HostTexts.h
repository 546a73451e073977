#pragma once

#include <host/Change.h>

#include <QString>

//! A text of the program itself, in the language in force.
[[nodiscard]] inline QString hostText(const char *key)
{
    return Change::tr(QStringLiteral("skylet"), QLatin1String(key));
}
