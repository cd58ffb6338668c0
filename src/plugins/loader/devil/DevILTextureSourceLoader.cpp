#include "plugins/loader/devil/DevILTextureSourceLoader.h"

#include <IL/ilu.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <vector>

#include "core/NativePath.h"
#include "core/VelunCore.h"
#include "plugins/loader/devil/DdsFile.h"
#include "plugins/loader/devil/DevILSession.h"
#include "plugins/loader/devil/DevILTextureData.h"

namespace Velun {

namespace {

const char* const kChannel = "loader.devil.textureloader";

Color::Format toColorFormat(ILint format) {
    switch (format) {
    case IL_COLOUR_INDEX:
        return Color::ColorIndex;
    case IL_RGB:
        return Color::Rgb;
    case IL_RGBA:
        return Color::Rgba;
    case IL_BGR:
        return Color::Bgr;
    case IL_BGRA:
        return Color::Bgra;
    case IL_LUMINANCE:
        return Color::Luminance;
    default:
        return Color::None;
    }
}

DataType::Type toDataType(ILint type) {
    switch (type) {
    case IL_BYTE:
        return DataType::Byte;
    case IL_UNSIGNED_BYTE:
        return DataType::UnsignedByte;
    case IL_SHORT:
        return DataType::Short;
    case IL_UNSIGNED_SHORT:
        return DataType::UnsignedShort;
    case IL_INT:
        return DataType::Int;
    case IL_UNSIGNED_INT:
        return DataType::UnsignedInt;
    case IL_FLOAT:
        return DataType::Float;
    case IL_DOUBLE:
        return DataType::Double;
    default:
        return DataType::None;
    }
}

// DevIL's name for a colour format the loader can deliver; 0 for none.
ILenum toILFormat(Color::Format format) {
    switch (format) {
    case Color::Rgb:
        return IL_RGB;
    case Color::Rgba:
        return IL_RGBA;
    case Color::Bgr:
        return IL_BGR;
    case Color::Bgra:
        return IL_BGRA;
    case Color::Luminance:
        return IL_LUMINANCE;
    default:
        return 0;
    }
}

ILenum toILType(DataType::Type type) {
    switch (type) {
    case DataType::Byte:
        return IL_BYTE;
    case DataType::UnsignedByte:
        return IL_UNSIGNED_BYTE;
    case DataType::Short:
        return IL_SHORT;
    case DataType::UnsignedShort:
        return IL_UNSIGNED_SHORT;
    case DataType::Int:
        return IL_INT;
    case DataType::UnsignedInt:
        return IL_UNSIGNED_INT;
    case DataType::Float:
        return IL_FLOAT;
    case DataType::Double:
        return IL_DOUBLE;
    default:
        return 0;
    }
}

// Whether `info` asks for something DevIL can make: each field is either left open
// (None, 0) or one the loader can deliver.
bool canDeliver(const TextureInfo& info) {
    return (info.getColorFormat() == Color::None || toILFormat(info.getColorFormat()) != 0) &&
           (info.getDataType() == DataType::None || toILType(info.getDataType()) != 0) &&
           info.getDepth() <= 1;
}

// The bound image in the engine's description.
TextureInfo describeBoundImage() {
    TextureInfo info;
    info.setWidth(static_cast<unsigned int>(ilGetInteger(IL_IMAGE_WIDTH)));
    info.setHeight(static_cast<unsigned int>(ilGetInteger(IL_IMAGE_HEIGHT)));
    info.setDepth(1);
    info.setColorFormat(toColorFormat(ilGetInteger(IL_IMAGE_FORMAT)));
    info.setDataType(toDataType(ilGetInteger(IL_IMAGE_TYPE)));
    return info;
}

// Whether the PNG chunks of the file, up to IEND, all lie inside it. DevIL's PNG
// reader does not stop at the end of a file, so a chunk length beyond it keeps libpng
// reading for minutes.
bool pngChunksFit(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    in.seekg(0, std::ios::end);
    std::streamoff size = in.tellg();
    std::streamoff at = 8;
    unsigned char header[8];
    while (in && at + 12 <= size) {
        in.seekg(at);
        if (!in.read(reinterpret_cast<char*>(header), sizeof header))
            return false;
        std::uint32_t length = (std::uint32_t(header[0]) << 24) | (std::uint32_t(header[1]) << 16) |
                               (std::uint32_t(header[2]) << 8) | header[3];
        at += 12 + static_cast<std::streamoff>(length);
        if (at > size)
            return false;
        if (header[4] == 'I' && header[5] == 'E' && header[6] == 'N' && header[7] == 'D')
            return true;
    }
    return false;
}

// Whether the JPEG's marker segments, up to the start of the scan, all lie inside the
// file; DevIL's JPEG source skips a segment that runs past the end two bytes at a time.
bool jpegSegmentsFit(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::vector<unsigned char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::size_t at = 2;
    if (bytes.size() < 4 || bytes[0] != 0xFF || bytes[1] != 0xD8)
        return false;
    while (at + 4 <= bytes.size()) {
        if (bytes[at] != 0xFF)
            return false;
        unsigned char marker = bytes[at + 1];
        if (marker == 0xFF) {
            ++at;
            continue;
        }
        std::size_t length = (std::size_t(bytes[at + 2]) << 8) | bytes[at + 3];
        if (length < 2 || at + 2 + length > bytes.size())
            return false;
        if (marker == 0xDA)
            return true;
        at += 2 + length;
    }
    return false;
}

// The file types the loader reads; every one of them is fuzzed. DevIL knows more, but
// the engine does not trust its readers of the others with damaged files.
struct ReadType {
    const char* extension;
    ILenum type;
};
const ReadType kReadTypes[] = {{"png", IL_PNG}, {"jpg", IL_JPG}, {"jpeg", IL_JPG},
                               {"tga", IL_TGA}, {"bmp", IL_BMP}, {"dds", IL_DDS}};

bool readBytes(const std::string& path, std::vector<unsigned char>& bytes) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return false;
    bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return true;
}

std::uint64_t little16(const std::vector<unsigned char>& b, std::size_t at) {
    return b[at] | (b[at + 1] << 8);
}
std::uint64_t little32(const std::vector<unsigned char>& b, std::size_t at) {
    return little16(b, at) | (little16(b, at + 2) << 16);
}
std::uint64_t big16(const std::vector<unsigned char>& b, std::size_t at) { return (b[at] << 8) | b[at + 1]; }
std::uint64_t big32(const std::vector<unsigned char>& b, std::size_t at) {
    return (big16(b, at) << 16) | big16(b, at + 2);
}
// A signed 32-bit height, of which BMP takes the sign for the row order.
std::uint64_t magnitude32(std::uint64_t value) {
    return value & 0x80000000u ? (~value + 1) & 0xFFFFFFFFu : value;
}
// The bytes of the file from `offset` on, 0 when it starts past the end.
std::uint64_t bytesFrom(const std::vector<unsigned char>& b, std::uint64_t offset) {
    return offset < b.size() ? b.size() - offset : 0;
}

// What a file's header announces: the size of the image and the bytes its pixels take,
// and whether they are stored as they are (else compressed).
struct Announced {
    std::uint64_t width = 0, height = 0, bits = 32, data = 0;
    bool raw = false;
};

bool announceBmp(const std::vector<unsigned char>& b, Announced& a) {
    if (b.size() < 34)
        return false;
    if (little32(b, 14) == 12) {
        a.width = little16(b, 18);
        a.height = little16(b, 20);
        a.bits = little16(b, 24);
        a.raw = true;
    } else {
        a.width = magnitude32(little32(b, 18));
        a.height = magnitude32(little32(b, 22));
        a.bits = little16(b, 28);
        // Uncompressed, or uncompressed with bit fields; the others are run lengths.
        a.raw = little32(b, 30) == 0 || little32(b, 30) == 3;
    }
    a.data = bytesFrom(b, little32(b, 10));
    return true;
}

bool announceTga(const std::vector<unsigned char>& b, Announced& a) {
    if (b.size() < 18)
        return false;
    a.width = little16(b, 12);
    a.height = little16(b, 14);
    a.bits = b[16];
    a.raw = b[2] == 1 || b[2] == 2 || b[2] == 3;
    a.data = bytesFrom(b, 18 + std::uint64_t(b[0]));
    return true;
}

bool announcePng(const std::vector<unsigned char>& b, Announced& a) {
    if (b.size() < 24)
        return false;
    a.width = big32(b, 16);
    a.height = big32(b, 20);
    a.data = b.size();
    return true;
}

// The size is in the frame header, a marker C0 to CF other than C4, C8 and CC.
bool announceJpeg(const std::vector<unsigned char>& b, Announced& a) {
    for (std::size_t at = 2; at + 9 <= b.size() && b[at] == 0xFF;) {
        unsigned char marker = b[at + 1];
        if (marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC) {
            a.height = big16(b, at + 5);
            a.width = big16(b, at + 7);
            a.data = b.size();
            return true;
        }
        at += 2 + big16(b, at + 2);
    }
    return false;
}

// Whether the image a file announces can be real: at most 16384 pixels a side, and no
// more pixel bytes than the file holds (stored as they are) or could expand to
// (compressed, at most 1024 to 1). DevIL allocates the whole image before it reads the
// pixels, so a damaged header would otherwise cost gigabytes.
bool announcedSizeFits(ILenum type, const std::string& path) {
    std::vector<unsigned char> bytes;
    if (!readBytes(path, bytes))
        return false;
    Announced a;
    bool read = type == IL_BMP   ? announceBmp(bytes, a)
                : type == IL_TGA ? announceTga(bytes, a)
                : type == IL_PNG ? announcePng(bytes, a)
                : type == IL_JPG ? announceJpeg(bytes, a)
                                 : true;
    if (!read)
        return false;
    if (type == IL_DDS)
        return true;
    if (a.width == 0 || a.height == 0 || a.width > 16384 || a.height > 16384)
        return false;
    // BMP rows are padded to four bytes; the others are not.
    std::uint64_t rowBits = a.width * std::max<std::uint64_t>(a.bits, 1);
    std::uint64_t rowBytes = type == IL_BMP ? (rowBits + 31) / 32 * 4 : (rowBits + 7) / 8;
    std::uint64_t pixelBytes = rowBytes * a.height;
    return a.raw ? pixelBytes <= a.data : pixelBytes <= 1024 * a.data;
}

}  // namespace

DevILTextureSourceLoader::DevILTextureSourceLoader() : mInitialized(false) {}

DevILTextureSourceLoader::~DevILTextureSourceLoader() {
    if (mInitialized)
        shutdown();
}

bool DevILTextureSourceLoader::isInitialized() const { return mInitialized; }

bool DevILTextureSourceLoader::initialize() {
    if (!mInitialized)
        DevILSession::acquire();
    mInitialized = true;
    return true;
}

bool DevILTextureSourceLoader::shutdown() {
    if (mInitialized)
        DevILSession::release();
    mInitialized = false;
    return true;
}

ILenum DevILTextureSourceLoader::typeOfExtension(const std::string& extension) {
    for (const ReadType& read : kReadTypes) {
        if (extension.size() == std::strlen(read.extension) &&
            std::equal(extension.begin(), extension.end(), read.extension,
                       [](char a, char b) { return std::tolower(static_cast<unsigned char>(a)) == b; }))
            return read.type;
    }
    return IL_TYPE_UNKNOWN;
}

bool DevILTextureSourceLoader::canLoad(const NameMapper::ResourceInfo& resource, const TextureInfo& info) {
    return canLoad(resource) && canDeliver(info);
}

bool DevILTextureSourceLoader::canLoad(const NameMapper::ResourceInfo& resource) {
    return typeOfExtension(resource.mFileType) != IL_TYPE_UNKNOWN;
}

bool DevILTextureSourceLoader::canConvert(const TextureInfo&, bool) { return false; }

void DevILTextureSourceLoader::logErrors(const NameMapper::ResourceInfo& resource, ILenum code) {
    while (code != IL_NO_ERROR) {
        logError(resource, iluErrorString(code));
        code = ilGetError();
    }
}

void DevILTextureSourceLoader::logError(const NameMapper::ResourceInfo& resource, const std::string& error) {
    VelunCore::getLogger(kChannel)->error("Error opening " + resource.mFileName + ": " + error);
}

Dorvan::SharedPtr<DdsTextureData>
DevILTextureSourceLoader::loadDds(const NameMapper::ResourceInfo& resource) {
    std::vector<unsigned char> bytes;
    if (!readBytes(toNativePath(resource.mFileName), bytes)) {
        logError(resource, iluErrorString(IL_COULD_NOT_OPEN_FILE));
        return Dorvan::SharedPtr<DdsTextureData>();
    }
    DdsFile file;
    if (!file.read(bytes.data(), bytes.size())) {
        logError(resource, file.getError());
        return Dorvan::SharedPtr<DdsTextureData>();
    }
    return Dorvan::SharedPtr<DdsTextureData>(new DdsTextureData(file));
}

ILuint DevILTextureSourceLoader::loadDdsImage(const NameMapper::ResourceInfo& resource) {
    Dorvan::SharedPtr<DdsTextureData> dds = loadDds(resource);
    if (!dds)
        return 0;
    if (!mInitialized)
        initialize();
    while (ilGetError() != IL_NO_ERROR) {
    }
    const TextureInfo& info = dds->getTextureInfo();
    ILuint image = 0;
    ilGenImages(1, &image);
    ilBindImage(image);
    // DevIL copies the pixels.
    ilTexImage(info.getWidth(), info.getHeight(), 1, static_cast<ILubyte>(info.getChannels()),
               toILFormat(info.getColorFormat()), IL_UNSIGNED_BYTE, const_cast<void*>(dds->getTextureData()));
    ILenum code = ilGetError();
    if (code != IL_NO_ERROR) {
        logErrors(resource, code);
        ilDeleteImages(1, &image);
        return 0;
    }
    return image;
}

ILuint DevILTextureSourceLoader::loadImage(const NameMapper::ResourceInfo& resource) {
    if (!mInitialized)
        initialize();
    // Errors left over from elsewhere are not this file's.
    while (ilGetError() != IL_NO_ERROR) {
    }
    ILuint image = 0;
    ilGenImages(1, &image);
    ilBindImage(image);
    const std::string path = toNativePath(resource.mFileName);
    ILboolean loaded = IL_FALSE;
    ILenum code = IL_NO_ERROR;
    ILenum type = typeOfExtension(resource.mFileType);
    if ((type == IL_PNG && !pngChunksFit(path)) || (type == IL_JPG && !jpegSegmentsFit(path)) ||
        !announcedSizeFits(type, path)) {
        std::ifstream exists(path, std::ios::binary);
        code = exists ? IL_INVALID_FILE_HEADER : IL_COULD_NOT_OPEN_FILE;
    } else {
        // By the type the loader chose: DevIL never picks another reader from the content.
        loaded = ilLoad(type, path.c_str());
        code = ilGetError();
    }
    if (code == IL_NO_ERROR && !loaded)
        code = IL_INVALID_FILE_HEADER;
    if (code == IL_NO_ERROR) {
        // Indices and two-channel images have no place in the engine's formats.
        ILint format = ilGetInteger(IL_IMAGE_FORMAT);
        if (format == IL_COLOUR_INDEX) {
            ILint palette = ilGetInteger(IL_PALETTE_TYPE);
            bool alpha = palette == IL_PAL_RGBA32 || palette == IL_PAL_BGRA32;
            ilConvertImage(alpha ? IL_RGBA : IL_RGB, IL_UNSIGNED_BYTE);
        } else if (format == IL_LUMINANCE_ALPHA || format == IL_ALPHA) {
            ilConvertImage(IL_RGBA, ilGetInteger(IL_IMAGE_TYPE));
        }
        code = ilGetError();
    }
    if (code == IL_NO_ERROR &&
        (ilGetInteger(IL_IMAGE_WIDTH) <= 0 || ilGetInteger(IL_IMAGE_HEIGHT) <= 0 || !ilGetData()))
        code = IL_INVALID_FILE_HEADER;
    if (code != IL_NO_ERROR) {
        logErrors(resource, code);
        ilDeleteImages(1, &image);
        return 0;
    }
    return image;
}

Dorvan::SharedPtr<TextureSource> DevILTextureSourceLoader::load(const NameMapper::ResourceInfo& resource) {
    if (typeOfExtension(resource.mFileType) == IL_DDS)
        return loadDds(resource);
    ILuint image = loadImage(resource);
    if (!image)
        return Dorvan::SharedPtr<TextureSource>();
    return Dorvan::SharedPtr<TextureSource>(new DevILTextureData(image, describeBoundImage()));
}

Dorvan::SharedPtr<TextureSource> DevILTextureSourceLoader::load(const NameMapper::ResourceInfo& resource,
                                                                const TextureInfo& info) {
    if (!canDeliver(info))
        return Dorvan::SharedPtr<TextureSource>();
    ILuint image =
        typeOfExtension(resource.mFileType) == IL_DDS ? loadDdsImage(resource) : loadImage(resource);
    if (!image)
        return Dorvan::SharedPtr<TextureSource>();
    ILenum format = info.getColorFormat() == Color::None ? ilGetInteger(IL_IMAGE_FORMAT)
                                                         : toILFormat(info.getColorFormat());
    ILenum type =
        info.getDataType() == DataType::None ? ilGetInteger(IL_IMAGE_TYPE) : toILType(info.getDataType());
    bool done = ilConvertImage(format, type) == IL_TRUE;
    unsigned int width =
        info.getWidth() ? info.getWidth() : static_cast<unsigned int>(ilGetInteger(IL_IMAGE_WIDTH));
    unsigned int height =
        info.getHeight() ? info.getHeight() : static_cast<unsigned int>(ilGetInteger(IL_IMAGE_HEIGHT));
    if (done && (width != static_cast<unsigned int>(ilGetInteger(IL_IMAGE_WIDTH)) ||
                 height != static_cast<unsigned int>(ilGetInteger(IL_IMAGE_HEIGHT)))) {
        iluImageParameter(ILU_FILTER, ILU_BILINEAR);
        done = iluScale(width, height, 1) == IL_TRUE;
    }
    ILenum code = ilGetError();
    if (!done || code != IL_NO_ERROR) {
        logErrors(resource, code != IL_NO_ERROR ? code : IL_INVALID_CONVERSION);
        ilDeleteImages(1, &image);
        return Dorvan::SharedPtr<TextureSource>();
    }
    return Dorvan::SharedPtr<TextureSource>(new DevILTextureData(image, describeBoundImage()));
}

Dorvan::SharedPtr<TextureSource> DevILTextureSourceLoader::convert(Dorvan::SharedPtr<TextureSource>,
                                                                   const TextureInfo&, bool) {
    return Dorvan::SharedPtr<TextureSource>();
}

}  // namespace Velun
