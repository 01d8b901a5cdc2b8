// Colour tables in the .cube text format.
#pragma once

#include <array>
#include <istream>
#include <ostream>
#include <string>
#include <vector>

namespace psdfile {

class CubeLUT {
  public:
    // Red, green, blue.
    using Row = std::array<double, 3>;

    enum Status : int {
        OK = 0,
        ReadError = 10,  // the stream has failed, or there is no memory for the table
        WriteError = 11,
        PrematureEndOfFile = 12,
        // The first line has more than 250 characters, or a later one that isn't a comment 64 KB.
        LineError = 13,
        UnknownOrRepeatedKeyword = 20,
        TitleMissingQuote = 21,  // either of the two
        DomainBoundsReversed = 22,
        LUTSizeOutOfRange = 23,       // 2 to 65536 rows, or 2 to 256 points an axis
        CouldNotParseTableData = 24,  // three numbers were due, of the table or the domain
    };

    // Replaces what the object holds. The stream is seekable, opened as binary, and read from its
    // very start; its state stays as it is, its position means nothing afterwards. What follows the
    // table isn't looked at. On any status but OK the tables stay as far as they were filled, and
    // mean nothing. Memory grows with the rows that have come, not with the size that the file
    // claims.
    int LoadCubeFile(std::istream& stream);
    // Numbers have the stream's format, and the title is written as it is: a quotation mark or a
    // line end in it isn't escaped. Writes nothing while `status` isn't OK, and a failure stays in
    // it.
    int SaveCubeFile(std::ostream& stream);

    int status = OK;
    // Up to the closing quote; as the file has it, which is mostly UTF-8.
    std::string title;
    Row domainMin{0.0, 0.0, 0.0};
    Row domainMax{1.0, 1.0, 1.0};
    // One of the two tables at most has rows.
    std::vector<Row> lut1D;
    // [red][green][blue], the same number of points on each axis.
    std::vector<std::vector<std::vector<Row>>> lut3D;
};

}  // namespace psdfile
