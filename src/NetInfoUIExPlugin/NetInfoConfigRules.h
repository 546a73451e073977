#pragma once
// What the module configuration means: the merge of the common and the operator's items, switches
// and unit tables.

#include <QString>
#include <QVector>

#include <host/TagUnits.h>

#include "NetInfoConfigRecords.h"

namespace NetInfoRules {

//! When \a custom has items of \a section, replaces all of that section in \a items by them, at the
//! end and in their order.
void replaceSection(const QString &section, QVector<NetInfoConfig> &items,
                    const QVector<NetInfoConfig> &custom);

//! Whether the last item of that \a name, in any section, has the value "true".
[[nodiscard]] bool isFunctionEnabled(const QVector<NetInfoConfig> &items, const QString &name);

//! Appends the items of \a section to \a units, in their order.
void appendUnits(const QVector<NetInfoConfig> &items, const QString &section,
                 QVector<TagUnits> &units);

} // namespace NetInfoRules
