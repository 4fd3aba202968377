#include "watchlist/document/RowImages.h"

#include <array>
#include <cstring>

namespace vx {

namespace {

constexpr std::array kTexts{&SRowImage::symbol, &SRowImage::annotation, &SRowImage::note,
                            &SRowImage::shown,  &SRowImage::rejected,   &SRowImage::typed};

} // namespace

// A byte that tells which texts there are, then for each its length in four bytes and the text.
void CRowImages::Add(uint32_t id, const SRowImage& image) {
    m_ids.push_back(id);
    unsigned present = 0;
    for (size_t i = 0; i < kTexts.size(); ++i)
        if (!(image.*kTexts[i]).empty()) present |= 1U << i;
    m_packed += static_cast<char>(present);
    for (const auto text : kTexts) {
        if ((image.*text).empty()) continue;
        const auto length = static_cast<uint32_t>((image.*text).size());
        m_packed.append(reinterpret_cast<const char*>(&length), sizeof length);
        m_packed += image.*text;
    }
}

SRowImage CRowImages::Unpack(size_t& at) const {
    SRowImage image;
    const auto present = static_cast<unsigned char>(m_packed[at++]);
    for (size_t i = 0; i < kTexts.size(); ++i) {
        if ((present & 1U << i) == 0) continue;
        uint32_t length = 0;
        std::memcpy(&length, m_packed.data() + at, sizeof length);
        at += sizeof length;
        image.*kTexts[i] = std::string_view(m_packed).substr(at, length);
        at += length;
    }
    return image;
}

} // namespace vx
