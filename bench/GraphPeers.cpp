#include "GraphPeers.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <vector>

namespace {

constexpr int kPairs = 8192; // then they repeat

[[nodiscard]] std::vector<GraphSamples::Pair> makePairs()
{
    std::mt19937 generator(20); // raw numbers: the same in every standard library
    const auto noise = [&generator] { return double(generator() % 1000) / 1000; };
    std::vector<GraphSamples::Pair> pairs(kPairs);
    for (int i = 0; i < kPairs; ++i) {
        const double upload = 220 + 120 * std::sin(i / 17.0) + 80 * noise();
        const double download = 560 + 180 * std::sin(i / 29.0) + 120 * noise();
        pairs[size_t(i)] = { upload, download };
    }
    pairs[0].download = GraphSamples::kHighest;
    return pairs;
}

template <typename Value>
[[nodiscard]] QVector<double> collect(int count, Value value)
{
    QVector<double> values;
    values.reserve(count);
    for (int i = 0; i < count; ++i)
        values.append(value(i));
    return values;
}

} // namespace

GraphSamples::Pair GraphSamples::at(int index)
{
    static const std::vector<Pair> pairs = makePairs();
    return pairs[size_t(index % kPairs)];
}

QVector<double> GraphView::uploads() const
{
    return collect(samples, [this](int i) { return GraphSamples::at(first + i).upload; });
}

QVector<double> GraphView::downloads() const
{
    return collect(samples, [this](int i) { return GraphSamples::at(first + i).download; });
}

QVector<double> GraphView::positions() const
{
    return collect(samples, [](int i) { return double(i); });
}

double GraphView::columnStep() const
{
    return double(samples - 1) / kColumns;
}

void shiftIn(QVector<double> &values, double newest)
{
    std::move(values.begin() + 1, values.end(), values.begin());
    values.last() = newest;
}

GraphPeer::~GraphPeer() = default;

QWidget &GraphPeer::canvas()
{
    return window();
}
