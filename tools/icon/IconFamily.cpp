#include "IconFamily.h"

#include <array>

namespace vellmoor::icon {
namespace {

constexpr std::size_t headerSize = 8; // of the file and of each member: four letters and the length, itself included

void appendHeader(std::string& bytes, const char* type, std::size_t contentSize) {
    bytes.append(type, 4);
    const auto length = static_cast<std::uint32_t>(contentSize + headerSize);
    for (const int shift : {24, 16, 8, 0}) {
        bytes.push_back(static_cast<char>(length >> shift & 0xffU));
    }
}

} // namespace

std::span<const Member> members() {
    // 16@2x, 32@2x, 128, 128@2x, 256, 256@2x, 512, 512@2x
    static constexpr std::array all{Member{"ic11", 32},  Member{"ic12", 64},  Member{"ic07", 128},
                                    Member{"ic13", 256}, Member{"ic08", 256}, Member{"ic14", 512},
                                    Member{"ic09", 512}, Member{"ic10", 1024}};
    return all;
}

std::string iconFamily(const std::function<std::string(int pixels)>& png) {
    std::string pictures;
    for (const Member& member : members()) {
        const std::string picture = png(member.pixels);
        appendHeader(pictures, member.type, picture.size());
        pictures += picture;
    }
    std::string file;
    appendHeader(file, "icns", pictures.size());
    return file + pictures;
}

} // namespace vellmoor::icon
