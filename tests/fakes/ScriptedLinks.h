#pragma once

#include "counters/LinkSource.h"

#include <map>

/*! Links that a test changes at will; tells the differences, as a kernel would. */
struct ScriptedLinks
{
    struct State
    {
        velq::Link link;
        velq::LinkCounters counters;
    };
    std::map<int, State> links; //!< by index
    std::vector<int> routes; //!< the links of the default routes, the preferred first
    bool readable = true;
    bool bounced = false; //!< all were down and up again since the latest look

    //! An up link with the default route, alone.
    State &connect(int index, const std::string &name)
    {
        State &state = links[index];
        state.link.index = index;
        state.link.instance = static_cast<std::uint64_t>(index) * 11;
        state.link.name = name;
        state.link.up = true;
        routes = { index };
        return state;
    }
    void disconnect(int index)
    {
        links.erase(index);
        routes.clear();
    }
};

class ScriptedLinkSource : public velq::LinkSource
{
public:
    explicit ScriptedLinkSource(ScriptedLinks &script)
        : m_script(script)
    {
    }

    velq::LinkNews read() override
    {
        velq::LinkNews news;
        news.valid = m_script.readable;
        if (!news.valid)
            return news;
        for (auto told = m_told.begin(); told != m_told.end();) {
            const bool gone = m_script.links.count(told->first) == 0;
            if (gone)
                add(news, velq::LinkStep::Kind::Gone, told->second);
            told = gone ? m_told.erase(told) : std::next(told);
        }
        for (const auto &[index, state] : m_script.links)
            tell(news, state);
        m_first = m_script.bounced = false;
        for (const int index : m_script.routes)
            news.routes.push_back({ 2, index, 0 });
        return news;
    }
    void noteDisconnect(int index) override
    {
        m_script.links[index].link.up = false;
    }

private:
    static velq::LinkStep &add(velq::LinkNews &news, velq::LinkStep::Kind kind,
                               const velq::Link &link)
    {
        news.steps.emplace_back();
        news.steps.back().kind = kind;
        news.steps.back().link = link;
        return news.steps.back();
    }
    void tell(velq::LinkNews &news, const ScriptedLinks::State &state)
    {
        const bool isNew = m_told.count(state.link.index) == 0;
        m_told[state.link.index] = state.link;
        if (m_script.bounced) {
            velq::Link down = state.link;
            down.up = false;
            add(news, velq::LinkStep::Kind::Changed, down);
        }
        velq::LinkStep &step
            = add(news, isNew ? velq::LinkStep::Kind::Appeared : velq::LinkStep::Kind::Changed,
                  state.link);
        step.counters = state.counters;
        if (isNew && !m_first)
            step.base = state.counters;
    }

    ScriptedLinks &m_script;
    std::map<int, velq::Link> m_told;
    bool m_first = true;
};
