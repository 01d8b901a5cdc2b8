#include "command/deep_samples.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>

namespace command {
namespace {

// Pieces that a pixel may be cut into, times their different ids.
constexpr std::size_t mostPieces = std::size_t{1} << 22;

void MakeSound(DeepSample& sample) {
    // The comparison is false for NaN too.
    sample.alpha = sample.alpha > 0.0F ? std::min(sample.alpha, 1.0F) : 0.0F;
    const bool isVolume =
        sample.zBack > sample.z && std::isfinite(sample.z) && std::isfinite(sample.zBack);
    if (!isVolume) sample.zBack = sample.z;
}

bool IsBefore(const DeepSample& left, const DeepSample& right) {
    return std::tie(left.z, left.zBack) < std::tie(right.z, right.zBack);
}

// In order, and each begins where the one before it has ended. Two in one room aren't tidy yet.
bool AreTidy(const DeepSample& front, const DeepSample& behind) {
    return front.zBack <= behind.z && (front.z < behind.z || front.zBack < behind.zBack);
}

bool AreTidy(const std::vector<DeepSample>& samples) {
    for (std::size_t i = 1; i < samples.size(); ++i) {
        if (!AreTidy(samples[i - 1], samples[i])) return false;
    }
    return true;
}

// Splitting a volume divides its optical depth, -ln(1 - alpha), by length, and mixing volumes adds
// their depths; the light that they emit goes the same way before what is in front dims it.
double OpticalDepth(double alpha) {
    return -std::log1p(-alpha);
}

// (1 - e^-depth) / depth.
double Dimming(double depth) {
    constexpr double smallest = 1e-300;
    return depth > smallest ? -std::expm1(-depth) / depth : 1.0;
}

}  // namespace

bool DeepTidier::Tidy(std::vector<DeepSample>& samples) {
    for (DeepSample& sample : samples)
        MakeSound(sample);
    std::erase_if(samples, [](const DeepSample& sample) { return std::isnan(sample.z); });
    if (AreTidy(samples)) return true;
    Sort(samples);
    if (AreTidy(samples)) return true;
    if (!Split(samples)) return false;
    samples.swap(tidy);
    return true;
}

// Equal ones stay in the file's order.
void DeepTidier::Sort(std::vector<DeepSample>& samples) {
    order.resize(samples.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
        if (IsBefore(samples[left], samples[right])) return true;
        return !IsBefore(samples[right], samples[left]) && left < right;
    });
    tidy.clear();
    for (const std::size_t i : order)
        tidy.push_back(samples[i]);
    samples.swap(tidy);
}

// Goes through all depths where something begins or ends.
bool DeepTidier::Split(const std::vector<DeepSample>& samples) {
    borders.clear();
    for (const DeepSample& sample : samples) {
        borders.push_back(sample.z);
        borders.push_back(sample.zBack);
    }
    std::sort(borders.begin(), borders.end());
    borders.erase(std::unique(borders.begin(), borders.end()), borders.end());

    tidy.clear();
    open.clear();
    std::size_t work = 0;
    const auto merge = [&](float front, float back) {
        if (pieces.empty()) return true;
        Merge(front, back);
        work += pieces.size() * std::max<std::size_t>(1, shares.size());
        return work <= mostPieces;
    };
    auto next = samples.begin();
    for (std::size_t i = 0; i < borders.size(); ++i) {
        const float front = borders[i];
        std::erase_if(open, [&](const DeepSample* sample) { return sample->zBack <= front; });
        pieces.clear();
        for (; next != samples.end() && next->z == front && next->zBack == front; ++next) {
            pieces.push_back({&*next, 1.0});
        }
        if (!merge(front, front)) return false;
        for (; next != samples.end() && next->z == front; ++next)
            open.push_back(&*next);
        if (open.empty()) continue;
        // Every open volume ends at some border behind this one.
        const float back = borders[i + 1];
        pieces.clear();
        for (const DeepSample* sample : open) {
            const double length = double{sample->zBack} - sample->z;
            pieces.push_back({sample, (double{back} - front) / length});
        }
        if (!merge(front, back)) return false;
    }
    return true;
}

// Adds the room's samples: one, or one for each set of ids.
void DeepTidier::Merge(float front, float back) {
    shares.clear();
    const DeepSample& first = *pieces.front().sample;
    if (pieces.size() == 1 && first.z == front && first.zBack == back) {
        tidy.push_back(first);
        return;
    }
    TakeShares();
    // In front of each share is what those before it let through: all that it and those behind it
    // cover, and what the room lets through.
    const std::size_t start = tidy.size();
    double behind = transmitted;
    for (std::size_t i = shares.size(); i-- > 0;) {
        const Share& share = shares[i];
        behind += share.alpha;
        const double before = i == 0 ? 1.0 : behind;
        DeepSample sample = *share.sample;
        sample.z = front;
        sample.zBack = back;
        sample.alpha =
            before > 0.0 ? static_cast<float>(std::min(1.0, share.alpha / before)) : 0.0F;
        for (std::size_t c = 0; c < sample.color.size(); ++c) {
            sample.color[c] = before > 0.0 ? static_cast<float>(share.color[c] / before) : 0.0F;
        }
        tidy.push_back(sample);
    }
    std::reverse(tidy.begin() + static_cast<std::ptrdiff_t>(start), tidy.end());
}

void DeepTidier::TakeShares() {
    const auto isOpaque = [](const Piece& piece) { return piece.sample->alpha >= 1.0F; };
    const auto opaque = std::count_if(pieces.begin(), pieces.end(), isOpaque);
    if (opaque > 0) {
        // Nothing else is seen among what is opaque at every depth.
        transmitted = 0.0;
        for (const Piece& piece : pieces) {
            if (!isOpaque(piece)) continue;
            Share& share = ShareOf(*piece.sample);
            share.alpha += 1.0 / static_cast<double>(opaque);
            for (std::size_t c = 0; c < share.color.size(); ++c) {
                share.color[c] += double{piece.sample->color[c]} / static_cast<double>(opaque);
            }
        }
        return;
    }
    double depth = 0.0;
    for (const Piece& piece : pieces) {
        const double alpha = piece.sample->alpha;
        const double pieceDepth = OpticalDepth(alpha) * piece.part;
        // Light for alpha and depth of the piece as they were one; without alpha it just adds.
        const double light = alpha > 0.0 ? OpticalDepth(alpha) / alpha * piece.part : piece.part;
        Share& share = ShareOf(*piece.sample);
        share.alpha += pieceDepth;
        for (std::size_t c = 0; c < share.color.size(); ++c) {
            share.color[c] += piece.sample->color[c] * light;
        }
        depth += pieceDepth;
    }
    const double dimming = Dimming(depth);
    transmitted = std::exp(-depth);
    for (Share& share : shares) {
        share.alpha *= dimming;
        for (double& value : share.color)
            value *= dimming;
    }
}

DeepTidier::Share& DeepTidier::ShareOf(const DeepSample& sample) {
    for (Share& share : shares) {
        if (share.sample->ids == sample.ids) return share;
    }
    return shares.emplace_back(Share{&sample});
}

std::array<float, 4> Flatten(std::span<const DeepSample> frontToBack) {
    std::array<double, 3> color{};
    double transmitted = 1.0;
    for (const DeepSample& sample : frontToBack) {
        for (std::size_t c = 0; c < color.size(); ++c)
            color[c] += sample.color[c] * transmitted;
        transmitted *= 1.0 - double{sample.alpha};
        if (transmitted <= 0.0) break;
    }
    return {static_cast<float>(color[0]), static_cast<float>(color[1]),
            static_cast<float>(color[2]), static_cast<float>(1.0 - transmitted)};
}

}  // namespace command
