#include "hc11/chip/Interrupts.h"

#include <bit>

namespace hc11::chip {

Source PromotedSource(std::uint8_t psel)
{
    static constexpr Source Table[16] = {
        Source::Tof, Source::PaOverflow, Source::PaInput, Source::Spi,
        Source::Sci, Source::Irq, Source::Irq, Source::Rti,
        Source::Ic1, Source::Ic2, Source::Ic3, Source::Oc1,
        Source::Oc2, Source::Oc3, Source::Oc4, Source::Ic4Oc5,
    };
    return Table[psel & 0x0F];
}

std::uint16_t HighestPriorityVector(std::uint32_t pending, std::uint8_t psel)
{
    if (pending == 0)
        return 0;
    const Source promoted = PromotedSource(psel);
    if (pending & Bit(promoted))
        return VectorOf(promoted);
    return VectorOf(Source(std::countr_zero(pending)));
}

} // namespace hc11::chip
