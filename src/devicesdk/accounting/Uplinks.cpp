#include "accounting/Uplinks.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace velq {

namespace {

template <std::size_t Size>
bool isOneOf(const std::string &kind, const char *const (&kinds)[Size])
{
    return std::any_of(std::begin(kinds), std::end(kinds),
                       [&kind](const char *other) { return kind == other; });
}

// The kernel's names of link kinds.
bool isTunnel(const Link &link)
{
    constexpr const char *kKinds[]
        = { "tun",    "wireguard", "ipip",      "sit",  "gre",     "gretap", "ip6tnl",
            "ip6gre", "vti",       "ip6gretap", "vti6", "xfrm",    "vxlan",  "geneve",
            "erspan", "fou",       "ipvti",     "ovpn", "ovpn-dco" };
    return isOneOf(link.kind, kKinds);
}

bool isMaster(const Link &link)
{
    constexpr const char *kKinds[] = { "bridge", "bond", "team", "openvswitch", "hsr" };
    return isOneOf(link.kind, kKinds);
}

bool isAboveOther(const Link &link)
{
    constexpr const char *kKinds[] = { "vlan", "macvlan", "macvtap", "ipvlan", "ipvtap", "macsec" };
    return isOneOf(link.kind, kKinds);
}

// Over a serial line it has its bytes alone, over another link (PPPoE, L2TP, PPTP) it shares them;
// the kernel does not say which.
bool isPointToPoint(const Link &link)
{
    return link.kind == "ppp";
}

/*! Follows links down to those whose bytes travel over no other one. */
class Resolver
{
public:
    explicit Resolver(const Links &links)
        : m_links(links)
    {
    }

    void add(int index)
    {
        resolve(index, 0);
    }
    void addByName(const std::string &name)
    {
        for (const auto &[index, link] : m_links) {
            if (!name.empty() && link.name == name)
                add(index);
        }
    }
    void addModem(const std::string &name)
    {
        for (const auto &[index, link] : m_links) {
            if (!name.empty() && link.name == name)
                isPointToPoint(link) ? append(index) : add(index); // it is known what it is over
        }
    }
    //! Those that are over no other link that was found, as far as anybody can see.
    void addPointToPoint()
    {
        for (const int index : m_pointToPoint)
            append(index);
    }
    //! What nothing else carries.
    void addTunnels()
    {
        for (const int index : m_tunnels)
            append(index);
    }
    [[nodiscard]] bool isEmpty() const
    {
        return m_found.empty();
    }
    [[nodiscard]] bool sawTunnel() const
    {
        return !m_tunnels.empty();
    }
    [[nodiscard]] std::vector<int> found() const
    {
        return m_found;
    }

private:
    void resolve(int index, int depth)
    {
        constexpr int kDeepest = 8; // of hostile rings; the kernel allows no deeper nesting either
        const auto it = m_links.find(index);
        if (it == m_links.end() || depth > kDeepest)
            return;
        const Link &link = it->second;
        if (isTunnel(link))
            m_tunnels.push_back(index);
        else if (isPointToPoint(link))
            m_pointToPoint.push_back(index);
        else if (isMaster(link))
            resolvePorts(index, depth);
        else if (isAboveOther(link) && m_links.count(link.lowerIndex) != 0)
            resolve(link.lowerIndex, depth + 1);
        else
            append(index);
    }

    void resolvePorts(int master, int depth)
    {
        // Ports to containers and virtual machines lead inside, not out.
        const auto leadsInside
            = [](const Link &link) { return link.kind == "veth" || isTunnel(link); };
        std::vector<int> ports;
        std::vector<int> inside;
        for (const auto &[index, link] : m_links) {
            if (link.masterIndex == master)
                (leadsInside(link) ? inside : ports).push_back(index);
        }
        if (ports.empty() && inside.size() == 1)
            ports = inside;
        for (const int port : ports)
            resolve(port, depth + 1);
        if (ports.empty())
            append(master);
    }

    void append(int index)
    {
        if (std::find(m_found.begin(), m_found.end(), index) == m_found.end())
            m_found.push_back(index);
    }

    const Links &m_links;
    std::vector<int> m_found;
    std::vector<int> m_tunnels;
    std::vector<int> m_pointToPoint;
};

} // namespace

bool mayBeOverAnother(const Link &link)
{
    return isTunnel(link) || isPointToPoint(link);
}

bool isHardware(const Link &link)
{
    return (link.kind.empty() || link.kind == "wwan") && !link.loopback;
}

std::vector<int> uplinks(const Links &links, const std::vector<DefaultRoute> &routes,
                         const NetworkFacts &facts)
{
    Resolver resolver(links);
    for (const ModemFacts &modem : facts.modems) {
        if (modem.connected)
            resolver.addModem(modem.interface);
    }
    resolver.addByName(facts.primaryInterface);
    for (const DefaultRoute &route : routes)
        resolver.add(route.index);
    if (resolver.isEmpty())
        resolver.addPointToPoint();
    // A tunnel alone has the routes: what it travels over is one of the hardware links then.
    if (resolver.isEmpty() && resolver.sawTunnel()) {
        for (const auto &[index, link] : links) {
            if (isHardware(link) && link.up)
                resolver.add(index);
        }
    }
    if (resolver.isEmpty())
        resolver.addTunnels();
    return resolver.found();
}

std::vector<int> withoutDoubles(const Links &links, std::vector<int> same)
{
    const std::vector<int> all = same;
    for (const int index : all) {
        const Link &upper = links.at(index);
        if (std::find(all.begin(), all.end(), upper.lowerIndex) == all.end())
            continue;
        const int other = isAboveOther(upper) ? index : upper.lowerIndex;
        same.erase(std::remove(same.begin(), same.end(), other), same.end());
    }
    return same;
}

} // namespace velq
