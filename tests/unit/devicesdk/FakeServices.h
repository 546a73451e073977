#pragma once
// A system bus on which services with objects come, go and change, in this process.

#include "FakeBus.h"

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

//! Appends a variant to a message; below 0 when that fails.
using FakeValue = std::function<int(sd_bus_message *)>;
[[nodiscard]] FakeValue fakeText(const std::string &text, char type = 's');
[[nodiscard]] FakeValue fakeNumber(std::uint64_t number, char type = 'u');
[[nodiscard]] FakeValue fakePaths(const std::vector<std::string> &paths);
[[nodiscard]] FakeValue fakePorts(const std::vector<std::pair<std::string, unsigned>> &ports);
[[nodiscard]] FakeValue fakeStats(std::uint64_t received, std::uint64_t sent, unsigned seconds);

using FakeProperties = std::map<std::string, FakeValue>;
using FakeObject = std::map<std::string, FakeProperties>; //!< by interface

/*! How a service answers. */
enum class Manner {
    Normal,
    Silent, //!< never
    Nonsense, //!< with a message of another type
    Refusing,
};

/*! Objects belong to the service whose path theirs begin with. Any thread. */
class FakeServices : public ServedBus
{
public:
    static constexpr const char *kModemManager = "org.freedesktop.ModemManager1";
    static constexpr const char *kNetworkManager = "org.freedesktop.NetworkManager";

    FakeServices() = default;
    ~FakeServices() override;

    //! The service is on the bus, with a new unique name and all objects that are set.
    void appear(const std::string &service);
    void vanish(const std::string &service);
    void setManner(Manner manner);

    //! Tells nobody.
    void setObject(const std::string &path, const FakeObject &object);
    //! With InterfacesAdded and InterfacesRemoved.
    void addObject(const std::string &path, const FakeObject &object);
    void removeObject(const std::string &path);
    //! With PropertiesChanged: the values told, or only that they changed.
    void change(const std::string &path, const std::string &interface, const FakeProperties &values,
                bool tellsValues = true);
    //! Without any signal.
    void changeSilently(const std::string &path, const std::string &interface,
                        const FakeProperties &values);
    //! A signal like change()'s that somebody else sends.
    void forge(const std::string &path, const std::string &interface, const FakeProperties &values);
    //! The bus closes the connection that there is.
    void disconnectClient();

    [[nodiscard]] int callCount() const; //!< of GetAll and GetManagedObjects
    [[nodiscard]] int clientCount() const; //!< that were let in until now
    [[nodiscard]] bool wasAskedToStartSomething() const;

protected:
    int answer(sd_bus_message *message) override;
    void look(sd_bus *bus) override;

private:
    using Job = std::function<void(sd_bus *)>;
    void post(const Job &job);
    void postChange(const std::string &sender, const std::string &path,
                    const std::string &interface, const FakeProperties &values, bool tellsValues);
    int answerForBus(sd_bus_message *message);
    int answerForService(sd_bus_message *message);
    int answerAll(sd_bus_message *message) const;
    int answerManaged(sd_bus_message *message) const;
    [[nodiscard]] std::string ownerOf(const std::string &path) const;

    mutable std::mutex m_mutex;
    std::map<std::string, FakeObject> m_objects;
    std::map<std::string, std::string> m_owners; //!< by service
    std::deque<Job> m_jobs;
    Manner m_manner = Manner::Normal;
    int m_calls = 0;
    int m_clients = 0;
    int m_names = 1;
    bool m_startsSomething = false;
};
