// One state of a document that undo can bring back. A value; the list is shared until either side changes,
// and images are never changed, so keeping one is cheap.
#pragma once

#include "annotation/AnyAnnotation.h"
#include "imaging/Image.h"

namespace marrowfin::annotation {

struct Snapshot {
    QList<AnyAnnotation> annotations;
    imaging::Image baseImage;
};

} // namespace marrowfin::annotation
