// The 8-bit bitmap decoder over any bytes: what it gives must be as large as
// it says, and masking may only change the alpha of index 255.
#include "FuzzSupport.h"
#include "preview/ModelPose.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = quarle::fuzz::Bytes(data, size);
    const auto plain = quarle::preview::DecodeBmp8(bytes, false);
    const auto masked = quarle::preview::DecodeBmp8(bytes, true);
    if (plain.has_value() != masked.has_value()) {
        __builtin_trap();
    }
    if (plain) {
        const std::size_t pixels =
            static_cast<std::size_t>(plain->Width) * static_cast<std::size_t>(plain->Height);
        if (plain->Rgba.size() != pixels * 4 || masked->Rgba.size() != pixels * 4) {
            __builtin_trap();
        }
        for (std::size_t i = 0; i < plain->Rgba.size(); ++i) {
            if (i % 4 != 3 && plain->Rgba[i] != masked->Rgba[i]) {
                __builtin_trap();
            }
        }
    }
    return 0;
}
