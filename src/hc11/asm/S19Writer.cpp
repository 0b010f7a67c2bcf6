#include "hc11/asm/S19Writer.h"

#include <algorithm>

namespace hc11::as11 {
namespace {

constexpr char Hex[] = "0123456789ABCDEF";

void PutByte(std::string& out, std::uint8_t b)
{
    out.push_back(Hex[b >> 4]);
    out.push_back(Hex[b & 15]);
}

} // namespace

S19Writer::S19Writer(std::string& out, std::string_view name) : out_(out)
{
    const std::size_t n = std::min<std::size_t>(name.size(), MaxDataBytes);
    Record('0', 0, reinterpret_cast<const std::uint8_t*>(name.data()), n);
}

void S19Writer::Data(std::uint16_t address, const std::uint8_t* bytes, std::size_t count)
{
    while (count > 0) {
        const bool follows = pendingCount_ > 0
            && std::uint32_t(pendingAddress_) + pendingCount_ == address;
        if (!follows || pendingCount_ == MaxDataBytes)
            Flush();
        if (pendingCount_ == 0)
            pendingAddress_ = address;
        // Up to the record's room and never across the top of memory.
        const std::size_t room = std::min<std::size_t>(MaxDataBytes - pendingCount_,
                                                       0x10000u - address);
        const std::size_t take = std::min(room, count);
        std::copy_n(bytes, take, pending_ + pendingCount_);
        pendingCount_ += take;
        bytes += take;
        count -= take;
        address = std::uint16_t(address + take);
        if (address == 0)
            Flush();
    }
}

void S19Writer::End(std::uint16_t start)
{
    Flush();
    Record('9', start, nullptr, 0);
}

void S19Writer::Flush()
{
    if (pendingCount_ > 0)
        Record('1', pendingAddress_, pending_, pendingCount_);
    pendingCount_ = 0;
}

void S19Writer::Record(char type, std::uint16_t address, const std::uint8_t* bytes, std::size_t count)
{
    const auto length = std::uint8_t(count + 3);   // address, data, checksum
    unsigned sum = length + (address >> 8) + (address & 0xFF);
    out_.push_back('S');
    out_.push_back(type);
    PutByte(out_, length);
    PutByte(out_, std::uint8_t(address >> 8));
    PutByte(out_, std::uint8_t(address));
    for (std::size_t i = 0; i < count; ++i) {
        PutByte(out_, bytes[i]);
        sum += bytes[i];
    }
    PutByte(out_, std::uint8_t(~sum));
    out_.push_back('\n');
}

} // namespace hc11::as11
