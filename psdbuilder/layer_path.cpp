// Splits a path into the names of layer sets.

#include "psdbuilder/layer_path.h"

namespace psdbuilder {

template <class Char>
LayerPath<Char>::LayerPath(std::basic_string_view<Char> path) {
    constexpr Char slash = '/';
    absolute = path.starts_with(slash) && (path.size() == 1 || path[1] != slash);
    std::basic_string<Char> token;
    const auto endToken = [&] {
        if (!token.empty()) tokens.push_back(std::move(token));
        token.clear();
    };
    for (std::size_t i = 0; i < path.size();) {
        if (path[i] != slash) {
            token += path[i++];
            continue;
        }
        std::size_t run = path.find_first_not_of(slash, i);
        run = (run == path.npos ? path.size() : run) - i;
        if (run % 2 == 1) endToken();
        token.append(run - run % 2, slash);
        i += run;
    }
    endToken();
}

template <class Char>
std::basic_string<Char> LayerPath<Char>::Leaf() const {
    return tokens.empty() ? std::basic_string<Char>() : tokens.back();
}

template <class Char>
LayerPath<Char> LayerPath<Char>::Parent() const {
    LayerPath parent = *this;
    if (!parent.tokens.empty()) parent.tokens.pop_back();
    return parent;
}

template struct LayerPath<char>;
template struct LayerPath<char16_t>;

}  // namespace psdbuilder
