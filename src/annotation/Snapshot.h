// One state of a document that undo can bring back. A value; the list is shared until either side changes,
// and images are never changed, so keeping one is cheap.
#pragma once

#include "annotation/AnyAnnotation.h"
#include "base/Image.h"

namespace marrowfin {

struct Snapshot {
    QList<AnyAnnotation> annotations;
    Image baseImage;
};

} // namespace marrowfin
