#pragma once

#include "PictureSession.h"

namespace vellmoor {

/// Every sheet and every confirmation over scripted results. False when a picture failed.
bool takePicturesOfSheets(const PictureFrame& frame);

} // namespace vellmoor
