#pragma once
// The simplest possible user of link news: it adds up what each link has carried.

#include "counters/LinkSource.h"

#include <string>
#include <vector>

struct LinkSum
{
    velq::Link link;
    velq::LinkCounters last;
    velq::LinkCounters sum; //!< since the link appeared
    bool hasBase = false; //!< it came while we watched
    bool gone = false;
    int falls = 0; //!< how often a counter was smaller than before
};

class LinkSums
{
public:
    void apply(const velq::LinkNews &news);
    //! The last link of this name, gone or not; null without one.
    [[nodiscard]] const LinkSum *of(const std::string &name) const;
    //! All links that had this index, in their order.
    [[nodiscard]] std::vector<LinkSum> withIndex(int index) const;
    [[nodiscard]] int falls() const;
    //! The first thing in the news that contradicts itself; empty: none.
    [[nodiscard]] const std::string &problem() const
    {
        return m_problem;
    }

private:
    void apply(const velq::LinkStep &step);
    void appear(const velq::LinkStep &step);
    [[nodiscard]] LinkSum *living(const velq::LinkStep &step);

    std::vector<LinkSum> m_sums;
    std::string m_problem;
};
