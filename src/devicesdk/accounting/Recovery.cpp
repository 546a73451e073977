#include "accounting/Recovery.h"

#include "accounting/Identity.h"

#include <algorithm>
#include <utility>

namespace velq {

namespace {

//! The kernel numbers instances as it makes them.
bool isOlder(const LinkId &link, const LinkId &other)
{
    return link.boot == other.boot && link.instance != 0 && link.instance < other.instance;
}

} // namespace

Recovery::Recovery(std::string boot, std::vector<LinkMark> marks)
    : m_boot(std::move(boot))
    , m_marks(std::move(marks))
{
}

std::optional<LinkMark> Recovery::take(std::vector<LinkMark>::iterator it)
{
    if (it == m_marks.end())
        return std::nullopt;
    LinkMark mark = std::move(*it);
    m_marks.erase(it);
    return mark;
}

std::optional<LinkMark> Recovery::takeSameLink(const Link &link)
{
    return take(std::find_if(m_marks.begin(), m_marks.end(), [&](const LinkMark &mark) {
        if (mark.id.boot != m_boot || m_boot.empty() || mark.id.index != link.index)
            return false;
        // Where the kernel does not tell instances apart, the name has to serve.
        const bool told = mark.id.instance != 0 && link.instance != 0;
        return told ? mark.id.instance == link.instance : mark.name == link.name;
    }));
}

std::optional<LinkMark> Recovery::takeEarlierLife(const std::string &device, const LinkId &link,
                                                  const std::vector<LinkId> &present)
{
    return take(std::find_if(m_marks.begin(), m_marks.end(), [&](const LinkMark &mark) {
        return mark.device == device && !isOlder(link, mark.id)
            && std::find(present.begin(), present.end(), mark.id) == present.end();
    }));
}

void Recovery::add(const LinkMark &mark)
{
    m_marks.push_back(mark);
}

std::vector<LinkMark> Recovery::dropUnstable()
{
    const auto middle
        = std::stable_partition(m_marks.begin(), m_marks.end(),
                                [](const LinkMark &mark) { return isStableKey(mark.device); });
    std::vector<LinkMark> dropped(middle, m_marks.end());
    m_marks.erase(middle, m_marks.end());
    return dropped;
}

} // namespace velq
