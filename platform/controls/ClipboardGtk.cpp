#include "platform/controls/ClipboardData.h"

#include <cstring>
#include <utility>

namespace norvel::controls {

namespace {

// A text of a million rows stays the bytes it is: the toolkit's own text object would hold four
// times as much.
class TextData : public wxDataObjectSimple {
  public:
    explicit TextData(std::string text)
        : wxDataObjectSimple(wxDF_UNICODETEXT), text_(std::move(text)) {}
    std::size_t GetDataSize() const override { return text_.size(); }
    bool GetDataHere(void* buffer) const override {
        std::memcpy(buffer, text_.data(), text_.size());
        return true;
    }
    bool SetData(std::size_t length, const void* buffer) override {
        text_.assign(static_cast<const char*>(buffer), length);
        return true;
    }
    using wxDataObjectSimple::GetDataHere;
    using wxDataObjectSimple::GetDataSize;
    using wxDataObjectSimple::SetData;

  private:
    std::string text_;
};

} // namespace

wxDataObject* clipboardData(std::string text) {
    return new TextData(std::move(text));
}

} // namespace norvel::controls
