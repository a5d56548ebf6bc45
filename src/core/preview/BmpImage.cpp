// The pixels of an 8-bit palette bitmap, the only kind the model compiler
// takes as a texture.
#include "document/BmpHeader.h"
#include "preview/ModelPose.h"

namespace quarle::preview {

std::optional<TextureImage> DecodeBmp8(std::string_view bytes, bool masked) {
    const BmpHeader h = ReadBmpHeader(bytes);
    if (!h.Bitmap || h.InfoSize < 40 || h.BitsPerPixel != 8 || h.Compression != 0 ||
        h.Width <= 0 || h.Height == 0 || !h.PixelsComplete()) {
        return std::nullopt;
    }
    const std::uint32_t colours = h.PaletteColours == 0 ? 256 : h.PaletteColours;
    if (colours > 256 || h.PaletteRoom() < colours) {
        return std::nullopt;
    }
    const std::size_t width = static_cast<std::size_t>(h.Width);
    const bool topDown = h.Height < 0;
    const std::size_t height = topDown ? static_cast<std::size_t>(-static_cast<std::int64_t>(h.Height))
                                       : static_cast<std::size_t>(h.Height);
    const std::size_t stride = (width + 3) / 4 * 4;
    const std::size_t palette = 14 + std::size_t{h.InfoSize};
    const std::size_t pixels = h.PixelOffset;

    TextureImage image;
    image.Width = h.Width;
    image.Height = static_cast<int>(height);
    image.Rgba.resize(width * height * 4);
    std::uint8_t* out = image.Rgba.data();
    for (std::size_t y = 0; y < height; ++y) {
        const std::size_t row = pixels + (topDown ? y : height - 1 - y) * stride;
        for (std::size_t x = 0; x < width; ++x) {
            const auto index = static_cast<unsigned char>(bytes[row + x]);
            if (index < colours) {
                // Palette entries are blue, green, red and a byte unused.
                const std::size_t entry = palette + std::size_t{index} * 4;
                out[0] = static_cast<std::uint8_t>(bytes[entry + 2]);
                out[1] = static_cast<std::uint8_t>(bytes[entry + 1]);
                out[2] = static_cast<std::uint8_t>(bytes[entry]);
            } else {
                out[0] = out[1] = out[2] = 0;
            }
            out[3] = masked && index == 255 ? 0 : 255;
            out += 4;
        }
    }
    return image;
}

} // namespace quarle::preview
