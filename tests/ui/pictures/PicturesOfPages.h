#pragma once

#include "PictureSession.h"

namespace vellmoor {

/// Every module's page in each of its states over scripted results: before a scan, while it is scanned, without
/// results, with them, unfolded, with limited permissions, while it is cleaned, after a change that failed. False when
/// a picture failed.
bool takePicturesOfPages(const PictureFrame& frame);

/// Every page with its result, and nothing else.
bool takePicturesOfResults(const PictureFrame& frame);

/// Pages whose texts and figures go to the limits. False when a picture failed.
bool takePicturesOfExtremes(const PictureFrame& frame);

} // namespace vellmoor
