#pragma once

#include "accounting/Booking.h"
#include "counters/LinkSource.h"

#include <optional>
#include <vector>

namespace velq {

/*! The marks that were stored when nobody counted any more, until a link claims them. */
class Recovery
{
public:
    Recovery() = default;
    Recovery(std::string boot, std::vector<LinkMark> marks);

    /*!
     * The mark of the very link \a link, which was here before us: what it counts beyond is not
     * booked yet. Taken out; nothing when there is none.
     */
    [[nodiscard]] std::optional<LinkMark> takeSameLink(const Link &link);
    /*!
     * The mark of an earlier life of \a device, whose link is gone now: all that the new link has
     * counted since it was made is not booked yet. A link that was there beside the one that is
     * gone is not meant. Taken out; nothing when there is none.
     */
    [[nodiscard]] std::optional<LinkMark> takeEarlierLife(const std::string &device,
                                                          const LinkId &link,
                                                          const std::vector<LinkId> &present);
    //! The mark of a link that is gone: for the next life of its device.
    void add(const LinkMark &mark);
    //! Takes out what nobody can claim any more: links of devices that are known by name only.
    [[nodiscard]] std::vector<LinkMark> dropUnstable();

private:
    std::optional<LinkMark> take(std::vector<LinkMark>::iterator it);

    std::string m_boot;
    std::vector<LinkMark> m_marks;
};

} // namespace velq
