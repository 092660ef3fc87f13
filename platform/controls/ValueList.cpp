// The list's entries and where it stands.
#include "platform/controls/ValueList.h"

#include "platform/controls/ScrollBar.h"
#include "platform/controls/ValueListTexts.h"
#include "platform/controls/WxText.h"
#include "platform/runtime/Errore.h"

#include <wx/dcclient.h>
#include <wx/scrolbar.h>
#include <wx/settings.h>

#include <algorithm>

namespace norvel::controls {

namespace {

constexpr int mostItems = 18;  // in view, where there is room
constexpr int fewestItems = 6; // for fewer the list rather covers its cell
constexpr int widest = 620;    // 1/96 inch

} // namespace

ValueList::ValueList(wxWindow* parent) {
    Hide(); // before it is made: it starts hidden
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
           wxWANTS_CHARS | wxBORDER_NONE | wxFULL_REPAINT_ON_RESIZE | wxCLIP_SIBLINGS);
    bar_ = makeScrollBar(*this, true, [this](wxScrollEvent& e) { scrollTo(e.GetPosition()); });
    listen();
}

// --- entries ---

void ValueList::Clear() {
    items_.Clear();
    selected_.clear();
    current_ = hot_ = -1;
    top_ = width_ = 0;
    typed_.clear();
    changed();
}

void ValueList::AddItem(std::string_view text) {
    items_.Add(text);
    changed();
}

void ValueList::checkIndex(std::size_t index) const {
    if (index >= ListCount()) throw Errore(9, "Indice non incluso nell'intervallo");
}

std::string ValueList::List(std::size_t index) const {
    checkIndex(index);
    return std::string(items_.At(index));
}

void ValueList::SetListIndex(int index) {
    if (index != -1) checkIndex(static_cast<std::size_t>(index));
    makeCurrent(index);
}

std::string ValueList::Text() const {
    return current_ < 0 ? std::string() : List(static_cast<std::size_t>(current_));
}

bool ValueList::Selected(std::size_t index) const {
    checkIndex(index);
    return multiple_ ? selected_.contains(index) : static_cast<int>(index) == current_;
}

void ValueList::SetSelected(std::size_t index, bool selected) {
    checkIndex(index);
    if (selected)
        selected_.insert(index);
    else
        selected_.erase(index);
    Refresh(false);
}

void ValueList::SetMultiSelect(bool multiple) {
    if (multiple_ == multiple) return;
    multiple_ = multiple;
    selected_.clear();
    changed();
}

void ValueList::SetNote(const std::string& note) {
    if (note_ == note) return;
    note_ = note;
    changed();
}

void ValueList::makeCurrent(int index) {
    current_ = index;
    if (index >= 0 && index < top_) scrollTo(index);
    if (index >= top_ + ItemsInView()) scrollTo(index - ItemsInView() + 1);
    changed();
}

// --- placing ---

double ValueList::scale() const {
    return FromDIP(1000) / 1000.0;
}

int ValueList::itemHeight() const {
    return GetCharHeight() + FromDIP(6);
}

int ValueList::noteHeight() const {
    return note_.empty() ? 0 : itemHeight();
}

int ValueList::border() const {
    return FromDIP(1);
}

wxRect ValueList::roomForItems() const {
    const wxSize size = GetClientSize();
    const int bar = bar_->IsShown() ? bar_->GetSize().x : 0;
    return {border(), border(), std::max(0, size.x - 2 * border() - bar),
            std::max(0, size.y - 2 * border() - noteHeight())};
}

int ValueList::ItemsInView() const {
    return std::max(1, roomForItems().height / itemHeight());
}

wxRect ValueList::ItemRect(std::size_t index) const {
    const wxRect room = roomForItems();
    const auto place = static_cast<long long>(index) - top_;
    if (index >= ListCount() || place < 0 || place > room.height / itemHeight()) return {};
    const wxRect box(room.x, room.y + static_cast<int>(place) * itemHeight(), room.width,
                     itemHeight());
    return box.Intersect(room);
}

// Entries come in thousands: the list settles once for all of them.
void ValueList::changed() {
    if (settleAsked_ || !IsShown()) return;
    settleAsked_ = true;
    CallAfter(&ValueList::settle);
}

void ValueList::settle() {
    settleAsked_ = false;
    if (!IsShown()) return;
    width_ = std::max(width_, widthInView());
    place();
    const int count = static_cast<int>(ListCount());
    bar_->SetScrollbar(top_, ItemsInView(), count, ItemsInView());
    Refresh(false);
}

int ValueList::widthInView() const {
    int widestText = 0;
    wxClientDC dc(const_cast<ValueList*>(this)); // measures only
    dc.SetFont(GetFont());
    const auto last =
        std::min(ListCount(), FirstItem() + static_cast<std::size_t>(ItemsInView()) + 1);
    for (std::size_t i = FirstItem(); i < last; ++i)
        widestText = std::max(widestText, dc.GetTextExtent(shownText(items_.At(i))).x);
    if (!note_.empty()) widestText = std::max(widestText, dc.GetTextExtent(toWx(note_)).x);
    const int mark = multiple_ ? itemHeight() : 0;
    const int bar = ListCount() > static_cast<std::size_t>(mostItems) ? bar_->GetBestSize().x : 0;
    return widestText + mark + bar + 2 * FromDIP(textMargin) + 2 * border();
}

// Under the cell; where too few entries would fit there, as high up as they need.
void ValueList::place() {
    const int most = std::min(FromDIP(widest), within_.width);
    const int width = std::clamp(width_, std::min(cell_.width, most), most);
    const int fixed = 2 * border() + noteHeight();
    const int count = std::max(1, static_cast<int>(std::min<std::size_t>(ListCount(), mostItems)));
    const int below = cell_.y + cell_.height;
    const int bottom = within_.y + within_.height;
    int items = std::min(count, (bottom - below - fixed) / itemHeight());
    if (items < std::min(count, fewestItems))
        items =
            std::clamp((within_.height - fixed) / itemHeight(), 1, std::min(count, fewestItems));
    const int height = fixed + items * itemHeight();
    SetSize(std::max(within_.x, std::min(cell_.x, within_.x + within_.width - width)),
            std::max(within_.y, std::min(below, bottom - height)), width, height);
    const int across = bar_->GetBestSize().x;
    placeScrollBar(*bar_, {width - border() - across, border(), across, height - fixed},
                   static_cast<int>(ListCount()) > items);
    scrollTo(top_);
}

void ValueList::scrollTo(long long first) {
    const auto count = static_cast<long long>(ListCount());
    const int top = static_cast<int>(std::clamp(first, 0LL, std::max(0LL, count - ItemsInView())));
    if (top == top_) return;
    top_ = top;
    changed();
}

void ValueList::DropUnder(const wxRect& cell, const wxRect& within) {
    cell_ = cell;
    within_ = within;
    top_ = width_ = 0;
    Show();
    Raise();
    settle();
    SetFocus();
}

void ValueList::CloseUp() {
    if (!IsShown()) return;
    if (HasCapture()) ReleaseMouse();
    pressed_ = false;
    const bool hadFocus = HasFocus();
    Hide();
    if (OnCloseUp) OnCloseUp(hadFocus);
}

} // namespace norvel::controls
