// Colour tables from text and to text.

#include "psdfile/cube_lut.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>

#include "psdfile/cube_lines.h"
#include "psdfile/cube_words.h"

namespace psdfile {

namespace {

using Status = CubeLUT::Status;
using Table3D = decltype(CubeLUT::lut3D);

constexpr int smallestSize = 2;
constexpr int largestSize1D = 65536;
constexpr int largestSize3D = 256;

bool TakeRow(std::string_view text, CubeLUT::Row& row) {
    return TakeNumber(text, row[0]) && TakeNumber(text, row[1]) && TakeNumber(text, row[2]);
}

std::string_view TextOf(std::span<char> line) {
    return {line.data(), line.size()};
}

// Writers that follow their user's locale write "0,5". True if the line has a point and so commas
// that mean something else.
bool MakeDecimalPoints(std::span<char> line) {
    if (TextOf(line).find('.') != std::string_view::npos) return true;
    std::replace(line.begin(), line.end(), ',', '.');
    return false;
}

// The lines before the table.
struct Header {
    enum Field { title, domainMin, domainMax, size, fieldCount };

    CubeLUT& lut;
    std::array<bool, fieldCount> seen{};
    int size1D = 0;
    int size3D = 0;
};

Status ReadTitle(Header& header, std::span<char> rest) {
    std::string_view text = WithoutLeadingBlanks(TextOf(rest));
    if (!text.starts_with('"')) return Status::TitleMissingQuote;
    text.remove_prefix(1);
    const std::size_t end = text.find('"');
    if (end == std::string_view::npos) return Status::TitleMissingQuote;
    header.lut.title = text.substr(0, end);
    return Status::OK;
}

Status ReadDomain(std::span<char> rest, CubeLUT::Row& domain) {
    MakeDecimalPoints(rest);
    return TakeRow(TextOf(rest), domain) ? Status::OK : Status::CouldNotParseTableData;
}

Status ReadSize(std::span<char> rest, int largest, int& size) {
    std::string_view text = TextOf(rest);
    const bool inRange = TakeNumber(text, size) && size >= smallestSize && size <= largest;
    return inRange ? Status::OK : Status::LUTSizeOutOfRange;
}

struct Keyword {
    std::string_view word;
    Header::Field field;
    Status (*read)(Header&, std::span<char> rest);
};

constexpr std::array<Keyword, 5> keywords{{
    {"TITLE", Header::title, ReadTitle},
    {"DOMAIN_MIN", Header::domainMin,
     [](Header& header, std::span<char> rest) { return ReadDomain(rest, header.lut.domainMin); }},
    {"DOMAIN_MAX", Header::domainMax,
     [](Header& header, std::span<char> rest) { return ReadDomain(rest, header.lut.domainMax); }},
    {"LUT_1D_SIZE", Header::size,
     [](Header& header, std::span<char> rest) {
         return ReadSize(rest, largestSize1D, header.size1D);
     }},
    {"LUT_3D_SIZE", Header::size,
     [](Header& header, std::span<char> rest) {
         return ReadSize(rest, largestSize3D, header.size3D);
     }},
}};

// Up to the first line of the table, which is read again.
Status ReadHeader(CubeLines& lines, Header& header) {
    std::span<char> line;
    for (;;) {
        Status status = lines.ReadLine(line);
        if (status != Status::OK) return status;
        std::string_view rest = TextOf(line);
        const std::string_view word = TakeWord(rest);
        if (word > "+" && word < ":") break;
        const auto keyword =
            std::find_if(keywords.begin(), keywords.end(),
                         [&](const Keyword& candidate) { return candidate.word == word; });
        if (keyword == keywords.end() || header.seen[keyword->field]) {
            return Status::UnknownOrRepeatedKeyword;
        }
        header.seen[keyword->field] = true;
        status = keyword->read(header, line.last(rest.size()));
        if (status != Status::OK) return status;
    }
    lines.RepeatLine();
    return Status::OK;
}

class TableRows {
  public:
    explicit TableRows(CubeLines& source) : lines(source) {}

    Status Read(CubeLUT::Row& row) {
        std::span<char> line;
        const Status status = lines.ReadLine(line);
        if (status != Status::OK) return status;
        pointSeen = pointSeen || MakeDecimalPoints(line);
        return TakeRow(TextOf(line), row) ? Status::OK : Status::CouldNotParseTableData;
    }

  private:
    CubeLines& lines;
    bool pointSeen = false;
};

// Appends `count` rows, which may be fewer than the header promised: nothing is allocated for rows
// that haven't come.
Status ReadRows(TableRows& rows, std::size_t count, std::vector<CubeLUT::Row>& table) {
    CubeLUT::Row row;
    for (std::size_t i = 0; i < count; ++i) {
        const Status status = rows.Read(row);
        if (status != Status::OK) return status;
        table.push_back(row);
    }
    return Status::OK;
}

// `steps` of blue, each with all greens and all reds, in the order of the file.
void AppendBlueSteps(const std::vector<CubeLUT::Row>& rows, std::size_t steps, Table3D& table) {
    const std::size_t size = table.size();
    for (std::size_t g = 0; g < size; ++g) {
        for (std::size_t r = 0; r < size; ++r) {
            std::vector<CubeLUT::Row>& blues = table[r][g];
            const std::size_t needed = blues.size() + steps;
            if (blues.capacity() < needed) blues.reserve(std::min(size, 4 * needed));
            for (std::size_t b = 0; b < steps; ++b) {
                blues.push_back(rows[(b * size + g) * size + r]);
            }
        }
    }
}

// In the file red runs fastest and in the table blue does, so that each row of the file goes to
// another page of memory. Some steps of blue at once make it fewer visits to each.
Status ReadTable3D(TableRows& rows, std::size_t size, Table3D& table) {
    constexpr std::size_t stepsAtOnce = 8;
    table.assign(size, Table3D::value_type(size));
    std::vector<CubeLUT::Row> read;
    for (std::size_t b = 0; b < size;) {
        const std::size_t steps = std::min(stepsAtOnce, size - b);
        read.clear();
        const Status status = ReadRows(rows, steps * size * size, read);
        if (status != Status::OK) return status;
        AppendBlueSteps(read, steps, table);
        b += steps;
    }
    return Status::OK;
}

Status Load(std::istream& stream, CubeLUT& lut) {
    CubeLines lines(stream);
    Status status = lines.FindSeparator();
    if (status != Status::OK) return status;
    Header header{lut};
    status = ReadHeader(lines, header);
    if (status != Status::OK) return status;
    if (!header.seen[Header::size]) return Status::LUTSizeOutOfRange;
    for (std::size_t axis = 0; axis < lut.domainMin.size(); ++axis) {
        if (!(lut.domainMin[axis] < lut.domainMax[axis])) return Status::DomainBoundsReversed;
    }
    TableRows rows(lines);
    return header.size1D > 0
               ? ReadRows(rows, static_cast<std::size_t>(header.size1D), lut.lut1D)
               : ReadTable3D(rows, static_cast<std::size_t>(header.size3D), lut.lut3D);
}

void WriteRow(std::ostream& stream, const CubeLUT::Row& row) {
    stream << row[0] << ' ' << row[1] << ' ' << row[2] << '\n';
}

void Save(std::ostream& stream, const CubeLUT& lut) {
    if (!lut.title.empty()) stream << "TITLE \"" << lut.title << "\"\n";
    stream << "# Created by CubeLUT.cpp\n";
    stream << "DOMAIN_MIN ";
    WriteRow(stream, lut.domainMin);
    stream << "DOMAIN_MAX ";
    WriteRow(stream, lut.domainMax);
    if (!lut.lut1D.empty()) {
        stream << "LUT_1D_SIZE " << lut.lut1D.size() << '\n';
        for (const CubeLUT::Row& row : lut.lut1D) {
            WriteRow(stream, row);
        }
    } else {
        const std::size_t size = lut.lut3D.size();
        stream << "LUT_3D_SIZE " << size << '\n';
        for (std::size_t b = 0; b < size; ++b) {
            for (std::size_t g = 0; g < size; ++g) {
                for (std::size_t r = 0; r < size; ++r) {
                    WriteRow(stream, lut.lut3D[r][g][b]);
                }
            }
        }
    }
    stream.flush();
}

}  // namespace

int CubeLUT::LoadCubeFile(std::istream& stream) {
    *this = CubeLUT{};
    try {
        status = Load(stream, *this);
    } catch (...) {
        status = ReadError;  // no memory for the table
    }
    return status;
}

int CubeLUT::SaveCubeFile(std::ostream& stream) {
    if (status != OK) return status;
    try {
        Save(stream, *this);
        if (stream.fail()) status = WriteError;
    } catch (...) {
        status = WriteError;  // the stream's user wants its failures thrown
    }
    return status;
}

}  // namespace psdfile
