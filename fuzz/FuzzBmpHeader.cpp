// The .bmp header reader over any bytes, with the size tests the checks make.
#include "FuzzSupport.h"
#include "document/BmpHeader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const quarle::BmpHeader h = quarle::ReadBmpHeader(quarle::fuzz::Bytes(data, size));
    return h.PaletteRoom() > (1u << 16) || (h.PixelsComplete() && !h.Bitmap) ? 1 : 0;
}
