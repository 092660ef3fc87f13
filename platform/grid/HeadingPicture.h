// The picture in a heading: read from a file, fitted to the text, drawn sharp at every scale.
#pragma once

#include "platform/grid/model/Model.h"
#include "platform/runtime/Api.h"

#include <wx/bitmap.h>
#include <wx/gdicmn.h>

#include <filesystem>
#include <memory>

namespace norvel::grid {

// Reads a bitmap file. Errore 53 where it cannot be opened, 481 where it is no bitmap.
NR_API std::shared_ptr<const Picture> loadPicture(const std::filesystem::path& file);

class HeadingPicture {
  public:
    // How large the heading's picture is drawn, in logical pixels: its own size (pixels of 96 dpi),
    // but no higher than a line of text. 0, 0 where none is shown. scale: logical pixels to one
    // pixel of 96 dpi.
    static wxSize Size(const HeadingStyle& heading, double scale, int textHeight);
    // The picture in that size; density: device pixels to a logical one. Kept until another is
    // asked for.
    const wxBitmap& Bitmap(const HeadingStyle& heading, wxSize size, double density);

  private:
    std::shared_ptr<const Picture> of_;
    bool transparent_ = false;
    wxSize size_;
    double density_ = 0;
    wxBitmap bitmap_;
};

} // namespace norvel::grid
