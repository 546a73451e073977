#pragma once

#include "modem/BusReplies.h"
#include "modem/NetworkFacts.h"

#include <array>
#include <map>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace velq {

using ObjectKey = std::pair<std::string, std::string>; //!< path and interface

/*! What is known of a service's objects. Those that have not answered yet are not in it. */
using ObjectTree = std::map<ObjectKey, PropertyMap>;

constexpr const char *kObjectManager = "org.freedesktop.DBus.ObjectManager";
constexpr const char *kModemInterface = "org.freedesktop.ModemManager1.Modem";

/*! A service whose objects are followed, from one that is always there to those it names. */
struct ServiceRules
{
    const char *name;
    const char *rootPath;
    //! The list of all objects (\a kObjectManager, kept as the property kModems), or an interface.
    const char *rootInterface;
    std::array<const char *, 4> interfaces; //!< whose changes matter; null where there are fewer
    //! All objects that are to be followed, as far as \a tree tells.
    std::vector<ObjectKey> (*objects)(const ObjectTree &tree);
    //! Whether an object has figures that change without a signal.
    bool (*isAging)(const ObjectKey &key, const PropertyMap &properties);
};

constexpr const char *kModems = "modems";

// The watcher's thread reads the rules while the statics of the process are destroyed.
static_assert(std::is_trivially_destructible_v<ServiceRules>, "rules stay to the end");

[[nodiscard]] const ServiceRules &modemManagerRules();
[[nodiscard]] const ServiceRules &networkManagerRules();

[[nodiscard]] std::vector<ModemFacts> modemFacts(const ObjectTree &tree);
[[nodiscard]] std::vector<ManagedDevice> deviceFacts(const ObjectTree &tree);
//! The IP interface of the primary connection's first device; empty without one.
[[nodiscard]] std::string primaryInterface(const ObjectTree &tree);

} // namespace velq
