// The lines of a machine-code file as the download reads them: only lines
// that begin with "S1" (upper case) are records; everything else (S0, S9,
// blanks, other text) is passed over. Digits are read by fixed columns with
// HexToLong, so a lower-case or stray character adds nothing and the
// one's-complement checksum then decides. A record without data (a byte count
// of 3 or less) and a line too short for its byte count are refused and end
// the download: their missing digits would read as zeros, a line such as
// "S1FF" would pass as 252 zero bytes at $0000, and a cut line means a damaged
// file that the user must hear of.
//
//   columns 1-2 "S1", 3-4 byte count (data bytes + 3), 5-8 load address,
//   then two digits per data byte, then two for the checksum.
#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <vector>

struct S1Record {
    enum class Kind {
        NotARecord,    // the line does not begin with "S1"
        NoData,        // a byte count of 3 or less: nothing to write
        Truncated,     // fewer digits than the byte count says
        BadChecksum,   // skipped without a word
        Good,
    };
    Kind kind = Kind::NotARecord;
    std::int32_t Address = 0;
    std::vector<std::uint8_t> Data;   // byte count - 3 bytes
};

// One line of the file, its line end included or not.
S1Record ReadS1Line(const QByteArray& line);

// The one's-complement rule: byte count, both address bytes, the data and the
// checksum add up to 255 modulo 256.
bool S1ChecksumGood(int byteCount, std::int32_t address, const std::vector<std::uint8_t>& data, int checksum);

// False for a record whose last byte would lie past $FFFF.
bool S1RecordFits(const S1Record& record);

// "Address = $E000" and "32 bytes" / "1 byte": the download window's labels.
QString DownloadAddressText(std::int32_t address);
QString DownloadSizeText(int count);

// Share of the file read so far, 0 to 100.
int DownloadProgress(qint64 consumed, qint64 length);
