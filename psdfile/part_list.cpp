// Writing, copying and freeing of the two lists.

#include "psdfile/part_list.h"

namespace psdfile {

PSDPartList::PSDPartList(const PSDPartList& other) : PSDPart(other) {
    items.reserve(other.items.size());
    for (const Entry& entry : other.items) {
        items.push_back({entry.copy(*entry.part), entry.copy});
    }
}

PSDPartList::~PSDPartList() {
    Clear();
}

void PSDPartList::Clear() {
    for (const Entry& entry : items) {
        entry.part->Destroy();
    }
    items.clear();
}

void PSDPartList::WriteBody(std::ostream& stream) {
    for (const Entry& entry : items) {
        entry.part->Write(stream);
    }
}

void SharedPSDPartList::WriteBody(std::ostream& stream) {
    for (const boost::shared_ptr<PSDPart>& part : items) {
        part->Write(stream);
    }
}

}  // namespace psdfile
