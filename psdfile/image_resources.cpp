// The resource section.

#include "psdfile/image_resources.h"

#include <boost/make_shared.hpp>

namespace psdfile {

PSDImageResources::PSDImageResources() : PSDPartList(1, false, true) {
    blocks.Add(boost::make_shared<PSDIRB_CopyrightFlag>());
}

void PSDImageResources::WriteBody(std::ostream& stream) {
    stream << blocks;
    const std::size_t names = alphaNames.data.Count();
    if (names > 0) stream << alphaNames;
    if (names > 0 && unicodeAlphaNames.data.Count() == names) stream << unicodeAlphaNames;
    if (iccProfile.data.Count() > 0) stream << iccProfile;
}

}  // namespace psdfile
