#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

struct sd_bus_message;

namespace velq {

constexpr std::size_t kTextLimit = 255; //!< bytes; a longer text counts as none
constexpr std::size_t kListLimit = 1024; //!< entries; what follows is left out

/*! A bearer's own figures. */
struct TrafficStats
{
    std::uint64_t download = 0; //!< bytes
    std::uint64_t upload = 0;
    std::uint64_t seconds = 0;
    [[nodiscard]] bool operator==(const TrafficStats &other) const
    {
        return download == other.download && upload == other.upload && seconds == other.seconds;
    }
};

/*! Nothing when the type was one that no property of ours has. A number below 0 is read as 0. */
using PropertyValue = std::variant<std::monostate, std::uint64_t, std::string,
                                   std::vector<std::string>, TrafficStats>;

/*! Only the properties that this library looks at. "Ports" holds the network ports' names alone. */
using PropertyMap = std::map<std::string, PropertyValue>;

[[nodiscard]] std::uint64_t numberOf(const PropertyMap &properties, const char *name);
[[nodiscard]] std::string textOf(const PropertyMap &properties, const char *name);
[[nodiscard]] std::vector<std::string> listOf(const PropertyMap &properties, const char *name);
[[nodiscard]] std::optional<TrafficStats> statsOf(const PropertyMap &properties);

/*! A signal about properties of one interface. */
struct PropertyChange
{
    std::string interface;
    PropertyMap values;
    bool incomplete = false; //!< a property changed whose value has to be asked for
};

struct OwnerChange
{
    std::string name;
    std::string owner; //!< empty: the name has none any more
};

// Readers of whole messages: nothing when the message is cut, or not of the signature told.

//! a{sv}, the answer to GetAll.
[[nodiscard]] std::optional<PropertyMap> readProperties(sd_bus_message *message);
//! sa{sv}as, PropertiesChanged.
[[nodiscard]] std::optional<PropertyChange> readChange(sd_bus_message *message);
//! a{oa{sa{sv}}}, the answer to GetManagedObjects: the paths that have \a interface.
[[nodiscard]] std::optional<std::vector<std::string>> readManaged(sd_bus_message *message,
                                                                  const std::string &interface);
//! oa{sa{sv}}, InterfacesAdded: the path, if it has \a interface.
[[nodiscard]] std::optional<std::string> readAdded(sd_bus_message *message,
                                                   const std::string &interface);
//! oas, InterfacesRemoved: the path, if it had \a interface.
[[nodiscard]] std::optional<std::string> readRemoved(sd_bus_message *message,
                                                     const std::string &interface);
//! sss, NameOwnerChanged.
[[nodiscard]] std::optional<OwnerChange> readOwnerChange(sd_bus_message *message);
//! s, the answer to GetNameOwner.
[[nodiscard]] std::optional<std::string> readName(sd_bus_message *message);

} // namespace velq
