#include "platform/grid/HeadingPicture.h"

#include "platform/runtime/Errore.h"

#include <wx/image.h>
#include <wx/log.h>
#include <wx/mstream.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>
#include <vector>

namespace norvel::grid {

namespace {

constexpr int positionShown = 1;

// The picture as the toolkit's image; what has the colour of the first pixel is left out.
wxImage imageOf(const Picture& picture, bool transparent) {
    wxImage image(picture.width, picture.height, false);
    std::memcpy(image.GetData(), picture.rgb.data(), picture.rgb.size());
    if (!transparent) return image;
    image.SetAlpha();
    const std::uint8_t* key = picture.rgb.data();
    const std::size_t pixels = picture.rgb.size() / 3;
    for (std::size_t i = 0; i < pixels; ++i) {
        const bool hidden = std::memcmp(key, &picture.rgb[3 * i], 3) == 0;
        image.GetAlpha()[i] = hidden ? wxIMAGE_ALPHA_TRANSPARENT : wxIMAGE_ALPHA_OPAQUE;
    }
    return image;
}

} // namespace

std::shared_ptr<const Picture> loadPicture(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw Errore(53, "File non trovato: " + file.filename().string());
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
    const wxLogNull quiet; // what is wrong with the file is said by the error
    wxMemoryInputStream input(bytes.data(), bytes.size());
    wxImage image;
    if (!image.LoadFile(input, wxBITMAP_TYPE_BMP) || !image.IsOk())
        throw Errore(481, "Immagine non valida");
    auto picture = std::make_shared<Picture>();
    picture->width = image.GetWidth();
    picture->height = image.GetHeight();
    const std::size_t size =
        3 * static_cast<std::size_t>(picture->width) * static_cast<std::size_t>(picture->height);
    picture->rgb.assign(image.GetData(), image.GetData() + size);
    return picture;
}

wxSize HeadingPicture::Size(const HeadingStyle& heading, double scale, int textHeight) {
    const Picture* picture = heading.ForegroundPicture.get();
    if (!picture || heading.ForegroundPicturePosition != positionShown) return {0, 0};
    if (picture->width <= 0 || picture->height <= 0) return {0, 0};
    const double factor = std::min(scale, static_cast<double>(textHeight) / picture->height);
    const auto fitted = [&](int length) {
        return std::max(1, static_cast<int>(std::lround(length * factor)));
    };
    return {fitted(picture->width), fitted(picture->height)};
}

const wxBitmap& HeadingPicture::Bitmap(const HeadingStyle& heading, wxSize size, double density) {
    const bool same = of_ == heading.ForegroundPicture &&
                      transparent_ == heading.TransparentForegroundPicture && size_ == size &&
                      density_ == density;
    if (same) return bitmap_;
    of_ = heading.ForegroundPicture;
    transparent_ = heading.TransparentForegroundPicture;
    size_ = size;
    density_ = density;
    const wxImage image = imageOf(*of_, transparent_)
                              .Scale(std::max(1, static_cast<int>(std::lround(size.x * density))),
                                     std::max(1, static_cast<int>(std::lround(size.y * density))),
                                     wxIMAGE_QUALITY_HIGH);
    bitmap_ = wxBitmap(image, wxBITMAP_SCREEN_DEPTH, density);
    return bitmap_;
}

} // namespace norvel::grid
