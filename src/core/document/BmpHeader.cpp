#include "document/BmpHeader.h"

#include "document/InputFile.h"

namespace quarle {

namespace {

constexpr std::size_t FileHeaderSize = 14;
constexpr std::size_t HeadBytes = FileHeaderSize + 40; // up to the end of the plain info header

std::uint32_t U32(std::string_view b, std::size_t at) {
    return static_cast<std::uint32_t>(static_cast<unsigned char>(b[at])) |
           static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 1])) << 8 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 2])) << 16 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 3])) << 24;
}
std::uint16_t U16(std::string_view b, std::size_t at) {
    return static_cast<std::uint16_t>(static_cast<unsigned char>(b[at]) |
                                      static_cast<unsigned char>(b[at + 1]) << 8);
}

} // namespace

std::uint32_t BmpHeader::PaletteRoom() const {
    const std::uint64_t start = FileHeaderSize + static_cast<std::uint64_t>(InfoSize);
    const std::uint64_t end = std::min<std::uint64_t>(PixelOffset, FileSize);
    return end > start
               ? static_cast<std::uint32_t>(std::min<std::uint64_t>((end - start) / 4, 1u << 16))
               : 0;
}

bool BmpHeader::PixelsComplete() const {
    if (!Bitmap || Compression != 0) {
        return false;
    }
    const std::uint64_t width =
        static_cast<std::uint64_t>(Width < 0 ? -static_cast<std::int64_t>(Width) : Width);
    const std::uint64_t height =
        static_cast<std::uint64_t>(Height < 0 ? -static_cast<std::int64_t>(Height) : Height);
    const std::uint64_t stride = (width * BitsPerPixel + 31) / 32 * 4;
    return static_cast<std::uint64_t>(PixelOffset) + stride * height <= FileSize;
}

BmpHeader ReadBmpHeader(std::string_view bytes, std::uint64_t fileSize) {
    BmpHeader h;
    h.Readable = true;
    h.FileSize = fileSize != 0 ? fileSize : bytes.size();
    if (bytes.size() < FileHeaderSize + 4) {
        return h;
    }
    const bool magic = bytes[0] == 'B' && bytes[1] == 'M';
    h.PixelOffset = U32(bytes, 10);
    h.InfoSize = U32(bytes, 14);
    if (magic && h.InfoSize == 12) {
        // The old OS/2 header: 16-bit sizes.
        if (bytes.size() < FileHeaderSize + 12) {
            return h;
        }
        h.Width = U16(bytes, 18);
        h.Height = U16(bytes, 20);
        h.BitsPerPixel = U16(bytes, 24);
        h.Bitmap = true;
        return h;
    }
    if (bytes.size() < HeadBytes) {
        return h;
    }
    h.PlainHeaders = true;
    h.DeclaredSize = U32(bytes, 2);
    h.Reserved1 = U16(bytes, 6);
    h.Reserved2 = U16(bytes, 8);
    h.Width = static_cast<std::int32_t>(U32(bytes, 18));
    h.Height = static_cast<std::int32_t>(U32(bytes, 22));
    h.Planes = U16(bytes, 26);
    h.BitsPerPixel = U16(bytes, 28);
    h.Compression = U32(bytes, 30);
    h.PaletteColours = U32(bytes, 46);
    h.Bitmap = magic && h.InfoSize >= 40;
    return h;
}

BmpHeader ReadBmpFile(const std::string& path) {
    InputFile file = InputFile::Open(path, FileKind::Bitmap);
    std::string head(HeadBytes, '\0');
    std::size_t got = 0;
    while (got < head.size()) {
        const std::size_t more = file.Read(head.data() + got, head.size() - got);
        if (more == 0) {
            break;
        }
        got += more;
    }
    if (!file) {
        return {};
    }
    head.resize(got);
    return ReadBmpHeader(head, file.Size() != 0 ? file.Size() : head.size());
}

} // namespace quarle
