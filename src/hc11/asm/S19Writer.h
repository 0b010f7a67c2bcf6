// Writes Motorola S-records: an S0 header, S1 data records of up to 32 bytes
// in the order the code is emitted, and an S9 end record.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace hc11::as11 {

class S19Writer {
public:
    static constexpr int MaxDataBytes = 32;

    // Starts the text in `out` with the header record that carries `name`.
    S19Writer(std::string& out, std::string_view name);

    // Bytes at an address. Bytes that follow the previous ones in memory join
    // its record; a record never runs past $FFFF.
    void Data(std::uint16_t address, const std::uint8_t* bytes, std::size_t count);

    // Writes the last data record and the S9 record with the start address.
    void End(std::uint16_t start);

private:
    void Record(char type, std::uint16_t address, const std::uint8_t* bytes, std::size_t count);
    void Flush();

    std::string& out_;
    std::uint8_t pending_[MaxDataBytes];
    std::size_t pendingCount_ = 0;
    std::uint16_t pendingAddress_ = 0;
};

} // namespace hc11::as11
