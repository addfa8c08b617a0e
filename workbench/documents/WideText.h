#pragma once

#include "platform/TextEncodings.h"

namespace quillara {

using ::NarrowText;
using ::WideText;

}  // namespace quillara
