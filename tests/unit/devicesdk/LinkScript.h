#pragma once

#include "accounting/Accountant.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/*! Tells an accountant what a kernel might say, and sums up what it books. */
class LinkScript
{
public:
    explicit LinkScript(std::vector<velq::LinkMark> stored = {}, const std::string &boot = "boot")
        : accountant(boot, std::move(stored))
    {
    }

    static velq::Link link(const std::string &name, int index = 3, std::uint64_t instance = 33)
    {
        velq::Link link;
        link.index = index;
        link.instance = instance;
        link.name = name;
        link.up = true;
        return link;
    }
    void appear(const velq::Link &link, std::uint64_t download = 0, std::uint64_t upload = 0)
    {
        step(velq::LinkStep::Kind::Appeared, link, download, upload).base
            = velq::LinkCounters { download, upload };
    }
    //! A link that was there before anybody looked.
    void find(const velq::Link &link, std::uint64_t download = 0, std::uint64_t upload = 0)
    {
        step(velq::LinkStep::Kind::Appeared, link, download, upload);
    }
    void change(const velq::Link &link)
    {
        steps.push_back({});
        steps.back().kind = velq::LinkStep::Kind::Changed;
        steps.back().link = link;
    }
    void changeWithCounters(const velq::Link &link, std::uint64_t download, std::uint64_t upload)
    {
        step(velq::LinkStep::Kind::Changed, link, download, upload).fromEvent = true;
    }
    void count(int index, std::uint64_t download, std::uint64_t upload, bool fromEvent = false)
    {
        velq::Link link;
        link.index = index;
        step(velq::LinkStep::Kind::Counted, link, download, upload).fromEvent = fromEvent;
    }
    void go(int index)
    {
        steps.push_back({});
        steps.back().kind = velq::LinkStep::Kind::Gone;
        steps.back().link.index = index;
    }
    void routeBy(std::vector<int> indexes)
    {
        routes.clear();
        for (const int index : indexes)
            routes.push_back({ 2, index, std::uint32_t(routes.size()) });
    }

    //! Takes the look, a second after the one before.
    const velq::BookingBatch &look(std::int64_t afterNs = 1000000000, bool book = true)
    {
        nowNs += afterNs;
        velq::LinkNews news;
        news.valid = true;
        news.steps.swap(steps);
        news.routes = routes;
        batch = accountant.advance(news, facts, nowNs, book);
        return batch;
    }
    [[nodiscard]] velq::Amounts booked() const
    {
        velq::Amounts sum;
        for (const velq::Booking &booking : batch.bookings)
            sum.add(booking.amounts);
        return sum;
    }
    [[nodiscard]] velq::Amounts bookedFor(const std::string &device) const
    {
        velq::Amounts sum;
        for (const velq::Booking &booking : batch.bookings) {
            if (booking.device == device)
                sum.add(booking.amounts);
        }
        return sum;
    }

    velq::Accountant accountant;
    std::vector<velq::DefaultRoute> routes;
    std::shared_ptr<velq::NetworkFacts> facts;
    std::vector<velq::LinkStep> steps;
    velq::BookingBatch batch;
    std::int64_t nowNs = 0;

private:
    velq::LinkStep &step(velq::LinkStep::Kind kind, const velq::Link &link, std::uint64_t download,
                         std::uint64_t upload)
    {
        steps.push_back({});
        steps.back().kind = kind;
        steps.back().link = link;
        steps.back().counters = velq::LinkCounters { download, upload };
        return steps.back();
    }
};
