#include "command/look_table.h"

#include <lcms2.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <limits>
#include <memory>
#include <new>
#include <span>
#include <sstream>
#include <streambuf>
#include <system_error>
#include <utility>
#include <vector>

#include "command/failure.h"
#include "command/input_range.h"
#include "command/native_path.h"

namespace command {
namespace {

using plugin::CubeLUT;

// The layer's profile counts them in a byte.
constexpr std::size_t mostPointsOfLayer = 255;

struct Fault {
    CubeLUT::Status status;
    const char* text;
};

constexpr Fault faults[] = {
    {CubeLUT::ReadError,
     "cannot be read to its end; check the disk, close other programs or give a table of fewer "
     "points"},
    {CubeLUT::PrematureEndOfFile,
     "ends before its table is complete; export it again or copy it again"},
    {CubeLUT::LineError, "has lines that no .cube table has; give a .cube file"},
    {CubeLUT::UnknownOrRepeatedKeyword,
     "has a keyword other than TITLE, DOMAIN_MIN, DOMAIN_MAX, LUT_1D_SIZE and LUT_3D_SIZE, or one "
     "twice, or both sizes; export it as a plain 1D or 3D .cube table"},
    {CubeLUT::TitleMissingQuote, "has a TITLE without quotation marks; put them around its text"},
    {CubeLUT::DomainBoundsReversed,
     "has a DOMAIN_MIN that is not below its DOMAIN_MAX; correct these lines"},
    {CubeLUT::LUTSizeOutOfRange,
     "has no size or one out of range; LUT_3D_SIZE is 2 to 256, LUT_1D_SIZE 2 to 65536"},
    {CubeLUT::CouldNotParseTableData,
     "has a domain or a row of its table that is not three numbers; export it again"},
};

[[noreturn]] void Fail(const std::string& path, const char* fault) {
    throw InputError(path + ": " + fault);
}

std::ifstream Open(const std::string& path) {
    std::error_code fault;
    const auto kind = std::filesystem::status(Native(path), fault).type();
    if (kind == std::filesystem::file_type::not_found) Fail(path, "no such file; check the path");
    if (kind == std::filesystem::file_type::directory) {
        Fail(path, "a folder, not a .cube file; give a file in it");
    }
    if (!fault && kind != std::filesystem::file_type::regular) {
        Fail(path, "a pipe or device, not a file; save the table to a file first");
    }
    errno = 0;
    std::ifstream stream(Native(path), std::ios::binary);
    if (!stream) {
        const int reason = errno;
        throw InputError(path + ": cannot be opened (" + std::generic_category().message(reason) +
                         "); check its permissions");
    }
    return stream;
}

// The reader tells of odd line ends on the standard output, where they would stand among what the
// command says.
class QuietOutput {
  public:
    QuietOutput() : buffer(std::cout.rdbuf(nullptr)) {}
    QuietOutput(const QuietOutput&) = delete;
    QuietOutput& operator=(const QuietOutput&) = delete;
    // Also clears what failed meanwhile.
    ~QuietOutput() { std::cout.rdbuf(buffer); }

  private:
    std::streambuf* buffer;
};

CubeLUT LoadPlain(const std::string& path, std::istream& stream) {
    const QuietOutput quiet;
    CubeLUT table;
    const int status = table.LoadCubeFile(stream);
    if (status == CubeLUT::OK) return table;
    const auto* found = std::find_if(std::begin(faults), std::end(faults),
                                     [&](const Fault& each) { return each.status == status; });
    Fail(path, found != std::end(faults) ? found->text : "is no .cube table; give another file");
}

// Lines that begin as the rows of a table do.
std::uint64_t CountRows(std::istream& stream) {
    stream.clear();
    stream.seekg(0);
    std::uint64_t rows = 0;
    bool atStart = true;
    std::array<char, 1U << 16> block;
    while (stream.read(block.data(), block.size()) || stream.gcount() > 0) {
        for (const char each : std::span(block).first(static_cast<std::size_t>(stream.gcount()))) {
            const bool isEnd = each == '\n' || each == '\r';
            const bool isBlank = each == ' ' || each == '\t';
            if (atStart && each >= '+' && each <= '9') ++rows;
            atStart = isEnd || (atStart && isBlank);
        }
    }
    return rows;
}

// The reader stops at the table's end and doesn't see what is behind it: a table of another size.
void CheckRows(const std::string& path, const CubeLUT& table, std::istream& stream) {
    const std::uint64_t points = table.lut3D.size();
    const std::uint64_t wanted =
        table.lut1D.empty() ? points * points * points : std::uint64_t{table.lut1D.size()};
    if (CountRows(stream) > wanted) {
        Fail(path, "has more rows than its size tells of; export it again");
    }
}

// The beginning of a table, where its keywords are.
std::string ReadHead(std::istream& stream) {
    constexpr std::size_t headSize = 4096;
    std::string head(headSize, '\0');
    stream.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(stream.gcount()));
    return head;
}

CubeLUT Load(const std::string& path, std::istream& stream) {
    std::string text = ReadHead(stream);
    const auto range = TakeInputRange(text);
    if (!range) {
        // A stream that failed to begin with is the reader's to tell of.
        if (stream.eof()) stream.clear();
        if (stream) stream.seekg(0);
        CubeLUT table = LoadPlain(path, stream);
        CheckRows(path, table, stream);
        return table;
    }
    text.append(std::istreambuf_iterator<char>(stream), {});
    std::istringstream plain(std::move(text));
    CubeLUT table = LoadPlain(path, plain);
    CheckRows(path, table, plain);
    table.domainMin.fill(range->min);
    table.domainMax.fill(range->max);
    return table;
}

CubeLUT Load(const std::string& path) {
    std::ifstream stream = Open(path);
    return Load(path, stream);
}

// Calls `take` with all rows: of three dimensions red slowest and blue fastest.
template <class Take>
void ForEachRow(const CubeLUT& table, Take&& take) {
    for (const CubeLUT::Row& row : table.lut1D)
        take(row);
    for (const auto& greens : table.lut3D) {
        for (const auto& blues : greens) {
            for (const CubeLUT::Row& row : blues)
                take(row);
        }
    }
}

bool HoldsFloats(const CubeLUT& table) {
    bool holds = true;
    ForEachRow(table, [&](const CubeLUT::Row& row) {
        for (const double value : row) {
            holds = holds && std::abs(value) <= double{std::numeric_limits<float>::max()};
        }
    });
    return holds;
}

// What LittleCMS gives; null when it has no memory.
template <class Object, auto free>
struct Free {
    void operator()(Object* object) const { free(object); }
};
using Stage = std::unique_ptr<cmsStage, Free<cmsStage, cmsStageFree>>;
using Curve = std::unique_ptr<cmsToneCurve, Free<cmsToneCurve, cmsFreeToneCurve>>;

Stage Curves(const CubeLUT& table) {
    std::vector<float> values(table.lut1D.size());
    std::array<Curve, 3> curves;
    for (std::size_t i = 0; i < curves.size(); ++i) {
        std::transform(table.lut1D.begin(), table.lut1D.end(), values.begin(),
                       [i](const CubeLUT::Row& row) { return static_cast<float>(row[i]); });
        curves[i].reset(cmsBuildTabulatedToneCurveFloat(
            nullptr, static_cast<cmsUInt32Number>(values.size()), values.data()));
        if (!curves[i]) return {};
    }
    // The stage makes copies.
    cmsToneCurve* const borrowed[] = {curves[0].get(), curves[1].get(), curves[2].get()};
    return Stage(cmsStageAllocToneCurves(nullptr, 3, borrowed));
}

Stage Cube(const CubeLUT& table) {
    const std::size_t points = table.lut3D.size();
    std::vector<float> values;
    values.reserve(points * points * points * 3);
    ForEachRow(table, [&](const CubeLUT::Row& row) {
        for (const double value : row)
            values.push_back(static_cast<float>(value));
    });
    return Stage(
        cmsStageAllocCLutFloat(nullptr, static_cast<cmsUInt32Number>(points), 3, 3, values.data()));
}

bool FitsLayer(const CubeLUT& table) {
    const CubeLUT whole;
    return !table.lut3D.empty() && table.lut3D.size() <= mostPointsOfLayer &&
           table.domainMin == whole.domainMin && table.domainMax == whole.domainMax;
}

// A 3D table as text, handed on in blocks.
class RowWriter {
  public:
    RowWriter(std::ostream& target, std::size_t points)
        : stream(target), text("LUT_3D_SIZE " + std::to_string(points) + "\n") {}

    template <class Number>
    void Add(Number red, Number green, Number blue) {
        // Enough for any float to be read back as itself.
        constexpr int digits = 9;
        constexpr std::size_t longestNumber = 24;
        char row[3 * longestNumber];
        char* end = row;
        for (const Number value : {red, green, blue}) {
            end =
                std::to_chars(end, row + sizeof row, value, std::chars_format::general, digits).ptr;
            *end++ = ' ';
        }
        end[-1] = '\n';
        text.append(row, end);
        if (text.size() >= blockSize) Flush();
    }
    // False when the stream has failed.
    bool Finish() {
        Flush();
        return !stream.flush().fail();
    }

  private:
    void Flush() {
        stream.write(text.data(), static_cast<std::streamsize>(text.size()));
        text.clear();
    }

    static constexpr std::size_t blockSize = 65536;

    std::ostream& stream;
    std::string text;
};

}  // namespace

// LittleCMS's, from 0 to 1 in each colour to what the table makes of it.
class LookTable::Pipeline {
  public:
    // Throws std::bad_alloc.
    explicit Pipeline(const CubeLUT& table) : handle(cmsPipelineAlloc(nullptr, 3, 3)) {
        Stage stage = table.lut1D.empty() ? Cube(table) : Curves(table);
        if (!handle || !stage || !cmsPipelineInsertStage(handle.get(), cmsAT_BEGIN, stage.get())) {
            throw std::bad_alloc();
        }
        // It is the pipeline's now.
        static_cast<void>(stage.release());
    }

    // `out` may be `in`.
    void Evaluate(const float* in, float* out) const {
        cmsPipelineEvalFloat(in, out, handle.get());
    }

  private:
    std::unique_ptr<cmsPipeline, Free<cmsPipeline, cmsPipelineFree>> handle;
};

LookTable::LookTable(const std::string& path) : LookTable(path, Load(path)) {}

LookTable::LookTable(const std::string& path, std::istream& stream)
    : LookTable(path, Load(path, stream)) {}

LookTable::LookTable(const std::string& path, CubeLUT read) : table(std::move(read)) {
    if (!HoldsFloats(table)) Fail(path, "has a value beyond 3.4e38 in its table; export it again");
    for (std::size_t i = 0; i < scale.size(); ++i)
        scale[i] = 1.0 / (table.domainMax[i] - table.domainMin[i]);
    try {
        pipeline = std::make_unique<Pipeline>(table);
    } catch (const std::bad_alloc&) {
        Fail(path,
             "not enough memory for its table; close other programs or give one of fewer points");
    }
    if (FitsLayer(table)) return;
    table.lut1D = {};
    table.lut3D = {};
}

LookTable::~LookTable() = default;

void LookTable::Correct(BMM_Color_fl* pixels, int count) const {
    const auto place = [this](float value, std::size_t i) {
        const double inDomain = (double{value} - table.domainMin[i]) * scale[i];
        // Not "not above": NaN is at the lower end too.
        return inDomain > 0.0 ? static_cast<float>(std::min(inDomain, 1.0)) : 0.0F;
    };
    for (int x = 0; x < count; ++x) {
        BMM_Color_fl& pixel = pixels[x];
        const float in[] = {place(pixel.r, 0), place(pixel.g, 1), place(pixel.b, 2)};
        float out[3];
        pipeline->Evaluate(in, out);
        pixel = {out[0], out[1], out[2], pixel.a};
    }
}

bool LookTable::Write(std::ostream& stream) const {
    return table.lut3D.empty() ? WriteSampled(stream) : WriteAsItIs(stream);
}

bool LookTable::WriteAsItIs(std::ostream& stream) const {
    const std::size_t points = table.lut3D.size();
    RowWriter writer(stream, points);
    for (std::size_t b = 0; b < points; ++b) {
        for (std::size_t g = 0; g < points; ++g) {
            for (std::size_t r = 0; r < points; ++r) {
                const CubeLUT::Row& row = table.lut3D[r][g][b];
                writer.Add(row[0], row[1], row[2]);
            }
        }
    }
    return writer.Finish();
}

bool LookTable::WriteSampled(std::ostream& stream) const {
    const int points = PointsToSample();
    const auto at = [points](int step) {
        return static_cast<float>(step) / static_cast<float>(points - 1);
    };
    RowWriter writer(stream, static_cast<std::size_t>(points));
    std::vector<BMM_Color_fl> reds(static_cast<std::size_t>(points));
    for (int b = 0; b < points; ++b) {
        for (int g = 0; g < points; ++g) {
            for (int r = 0; r < points; ++r)
                reds[static_cast<std::size_t>(r)] = {at(r), at(g), at(b), 1.0F};
            Correct(reds.data(), points);
            for (const BMM_Color_fl& row : reds)
                writer.Add(row.r, row.g, row.b);
        }
    }
    return writer.Finish();
}

// An even number: with an odd one the layer's profile isn't aligned as strict readers want it. In
// each colour of its own the greys are all that a 1D table has.
int LookTable::PointsToSample() const {
    constexpr int few = 64;
    constexpr int many = 128;
    // Greys looked at between two points.
    constexpr int between = 16;
    constexpr float mostOff = 0.5F / 255.0F;
    std::vector<BMM_Color_fl> greys((few - 1) * between + 1);
    for (std::size_t i = 0; i < greys.size(); ++i) {
        const float grey = static_cast<float>(i) / static_cast<float>(greys.size() - 1);
        greys[i] = {grey, grey, grey, 1.0F};
    }
    Correct(greys.data(), static_cast<int>(greys.size()));
    // A layer holds no other values.
    for (BMM_Color_fl& grey : greys) {
        grey = {std::clamp(grey.r, 0.0F, 1.0F), std::clamp(grey.g, 0.0F, 1.0F),
                std::clamp(grey.b, 0.0F, 1.0F), 1.0F};
    }
    const auto isOff = [&](float BMM_Color_fl::*color, std::size_t i) {
        const std::size_t start = std::min(i, greys.size() - 2) / between * between;
        const float part = static_cast<float>(i - start) / between;
        const float made =
            greys[start].*color * (1.0F - part) + greys[start + between].*color * part;
        return std::abs(made - greys[i].*color) > mostOff;
    };
    for (std::size_t i = 0; i < greys.size(); ++i) {
        for (const auto color : {&BMM_Color_fl::r, &BMM_Color_fl::g, &BMM_Color_fl::b}) {
            if (isOff(color, i)) return many;
        }
    }
    return few;
}

}  // namespace command
