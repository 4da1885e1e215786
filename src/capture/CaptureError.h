// Why a capture gave no image. The text is the case's own name: it goes behind the flow's prefix on standard
// output. Any thread.
#pragma once

#include "base/Result.h"

namespace marrowfin::capture {

enum class CaptureError { noImageBuffer, imageCreationFailed, streamStartFailed };

inline Error toError(CaptureError error) {
    switch (error) {
    case CaptureError::noImageBuffer:
        return {Error::Kind::Failed, QStringLiteral("noImageBuffer")};
    case CaptureError::imageCreationFailed:
        return {Error::Kind::Failed, QStringLiteral("imageCreationFailed")};
    case CaptureError::streamStartFailed:
        break;
    }
    return {Error::Kind::Failed, QStringLiteral("streamStartFailed")};
}

inline tl::unexpected<Error> failure(CaptureError error) {
    return tl::unexpected<Error>(toError(error));
}

} // namespace marrowfin::capture
