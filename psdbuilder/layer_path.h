// Names given to the builder are paths through the layer sets.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace psdbuilder {

// "/" separates. Of a run of slashes of odd length the first separates and the others belong to
// the token behind; a run of even length separates nothing. Slashes that don't separate stay in
// the token as they stand. Tokens of length zero are dropped.
template <class Char>
struct LayerPath {
    explicit LayerPath(std::basic_string_view<Char> path);

    // The last token, the layer's own name; empty if there is none.
    [[nodiscard]] std::basic_string<Char> Leaf() const;

    // Without the last token.
    [[nodiscard]] LayerPath Parent() const;

    // Starts at the document: begins with one slash that no second follows.
    bool absolute;
    std::vector<std::basic_string<Char>> tokens;
};

extern template struct LayerPath<char>;
extern template struct LayerPath<char16_t>;

}  // namespace psdbuilder
