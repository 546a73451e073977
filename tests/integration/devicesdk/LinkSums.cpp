#include "LinkSums.h"

using velq::LinkStep;

namespace {

void count(LinkSum &sum, const velq::LinkCounters &now)
{
    if (now.download < sum.last.download || now.upload < sum.last.upload) {
        ++sum.falls;
    } else {
        sum.sum.download += now.download - sum.last.download;
        sum.sum.upload += now.upload - sum.last.upload;
    }
    sum.last = now;
}

} // namespace

void LinkSums::apply(const velq::LinkNews &news)
{
    if (!news.valid)
        return;
    for (const LinkStep &step : news.steps)
        apply(step);
}

void LinkSums::apply(const LinkStep &step)
{
    if (step.kind == LinkStep::Kind::Appeared)
        return appear(step);
    LinkSum *sum = living(step);
    if (!sum) {
        m_problem = "a step of an unknown link";
        return;
    }
    if (step.kind == LinkStep::Kind::Changed)
        sum->link = step.link;
    if (step.kind == LinkStep::Kind::Gone)
        sum->gone = true;
    if (step.counters)
        count(*sum, *step.counters);
}

void LinkSums::appear(const LinkStep &step)
{
    if (living(step) || !step.counters) {
        m_problem = "a link appeared twice or without counters";
        return;
    }
    LinkSum sum;
    sum.link = step.link;
    sum.hasBase = step.base.has_value();
    sum.last = step.base.value_or(*step.counters);
    count(sum, *step.counters);
    m_sums.push_back(sum);
}

LinkSum *LinkSums::living(const LinkStep &step)
{
    for (LinkSum &sum : m_sums)
        if (!sum.gone && sum.link.index == step.link.index
            && sum.link.instance == step.link.instance)
            return &sum;
    return nullptr;
}

const LinkSum *LinkSums::of(const std::string &name) const
{
    const LinkSum *found = nullptr;
    for (const LinkSum &sum : m_sums)
        if (sum.link.name == name)
            found = &sum;
    return found;
}

std::vector<LinkSum> LinkSums::withIndex(int index) const
{
    std::vector<LinkSum> found;
    for (const LinkSum &sum : m_sums)
        if (sum.link.index == index)
            found.push_back(sum);
    return found;
}

int LinkSums::falls() const
{
    int falls = 0;
    for (const LinkSum &sum : m_sums)
        falls += sum.falls;
    return falls;
}
