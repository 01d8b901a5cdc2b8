// How the host owns its objects: they are destroyed with DeleteThis, never with delete.
#pragma once

#include <memory>

namespace host {

struct DeleteThis {
    template <class T>
    void operator()(T* object) const {
        object->DeleteThis();
    }
};

template <class T>
using Owned = std::unique_ptr<T, DeleteThis>;

}  // namespace host
