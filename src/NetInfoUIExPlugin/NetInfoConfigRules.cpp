#include "NetInfoConfigRules.h"

#include <QLatin1String>

#include <algorithm>
#include <iterator>

namespace NetInfoRules {

void replaceSection(const QString &section, QVector<NetInfoConfig> &items,
                    const QVector<NetInfoConfig> &custom)
{
    const auto inSection
        = [&section](const NetInfoConfig &item) { return item.section == section; };
    if (std::none_of(custom.begin(), custom.end(), inSection))
        return;
    items.erase(std::remove_if(items.begin(), items.end(), inSection), items.end());
    std::copy_if(custom.begin(), custom.end(), std::back_inserter(items), inSection);
}

bool isFunctionEnabled(const QVector<NetInfoConfig> &items, const QString &name)
{
    // The last item decides: the operator's stand after the common ones.
    for (int i = int(items.size()) - 1; i >= 0; --i) {
        if (items.at(i).name == name)
            return items.at(i).value == QLatin1String("true");
    }
    return false;
}

void appendUnits(const QVector<NetInfoConfig> &items, const QString &section,
                 QVector<TagUnits> &units)
{
    for (const NetInfoConfig &item : items) {
        if (item.section != section)
            continue;
        const TagUnits unit
            = { item.name, item.value.toInt(), item.type.toULongLong(), item.langResID };
        units.append(unit);
    }
}

} // namespace NetInfoRules
