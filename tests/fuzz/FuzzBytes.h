#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

/*! The fuzzer's bytes, taken from the front; zeros after the end. */
class FuzzBytes
{
public:
    FuzzBytes(const std::uint8_t *data, std::size_t size)
        : m_data(data)
        , m_end(data + size)
    {
    }
    [[nodiscard]] bool areUsed() const
    {
        return m_data == m_end;
    }
    unsigned next()
    {
        return areUsed() ? 0 : *m_data++;
    }
    //! Below \a count.
    unsigned next(std::size_t count)
    {
        return next() % static_cast<unsigned>(count);
    }
    std::int64_t number()
    {
        std::uint64_t bits = 0;
        for (unsigned i = 0; i < sizeof bits; ++i)
            bits |= std::uint64_t(next()) << (8 * i);
        return static_cast<std::int64_t>(bits);
    }
    //! Its length comes first.
    std::string text()
    {
        std::string text;
        for (unsigned left = next(); left > 0 && !areUsed(); --left)
            text += static_cast<char>(next());
        return text;
    }
    //! One of \a values.
    template <typename Value, std::size_t Count>
    const Value &oneOf(const Value (&values)[Count])
    {
        return values[next(Count)];
    }

private:
    const std::uint8_t *m_data;
    const std::uint8_t *const m_end;
};
