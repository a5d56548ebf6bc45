#include "FontWarmUp.h"

#if defined(QUARLE_FONTCONFIG)
#include <fontconfig/fontconfig.h>
#endif

namespace quarle::platform {

FontWarmUp::FontWarmUp() {
#if defined(QUARLE_FONTCONFIG)
    // The same call Qt's font database makes first; once it has been made,
    // Qt's returns at once.
    reader_ = std::thread([] { FcInit(); });
#endif
}

FontWarmUp::~FontWarmUp() {
    Wait();
}

void FontWarmUp::Wait() {
    if (reader_.joinable()) {
        reader_.join();
    }
}

} // namespace quarle::platform
