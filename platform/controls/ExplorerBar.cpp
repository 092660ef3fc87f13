#include "platform/controls/ExplorerBar.h"

#include "platform/controls/ExplorerBarImpl.h"
#include "platform/controls/ScrollBar.h"
#include "platform/controls/WxText.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/Twips.h"

#include <wx/dcclient.h>
#include <wx/scrolbar.h>

#include <algorithm>
#include <utility>

namespace norvel::controls {

namespace {

constexpr int iconSide = 20;  // logical pixels at 96 dpi
constexpr int marginUnit = 4; // likewise

} // namespace

ExplorerBar::ExplorerBar(wxWindow* parent, int widthTwips)
    : wxControl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_NONE | wxWANTS_CHARS),
      impl_(std::make_unique<Impl>(*this, widthTwips)) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    impl_->scrollBar = makeScrollBar(
        *this, true, [this](wxScrollEvent& event) { impl_->scrollTo(event.GetPosition()); });
    impl_->listen();
    impl_->listenToWheel();
    impl_->layOut();
    SetInitialSize();
}

ExplorerBar::~ExplorerBar() = default;

void ExplorerBar::AddGroup(ExplorerGroup group) {
    std::vector<std::string> keys{group.Key};
    for (const ExplorerItem& item : group.Items)
        keys.push_back(item.Key);
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const auto same = [&](const std::string& other) { return equalsText(other, keys[i]); };
        const auto end = keys.begin() + static_cast<std::ptrdiff_t>(i);
        if (std::any_of(keys.begin(), end, same) || impl_->rowOf(keys[i]))
            throw Errore(35602, "Chiave non univoca nell'insieme");
    }
    impl_->groups.push_back(std::move(group));
    impl_->layOut();
}

void ExplorerBar::Clear() {
    impl_->groups.clear();
    impl_->hover = impl_->pressed = impl_->focus = std::nullopt;
    impl_->selected.clear();
    impl_->top = 0;
    impl_->layOut();
}

const std::vector<ExplorerGroup>& ExplorerBar::Groups() const {
    return impl_->groups;
}

void ExplorerBar::StopRedraw() {
    if (impl_->stopped++ == 0) Freeze();
}

void ExplorerBar::ResumeRedraw() {
    if (impl_->stopped == 0 || --impl_->stopped > 0) return;
    impl_->layOut();
    Thaw();
}

void ExplorerBar::SetSelectedKey(std::string_view key) {
    if (!key.empty() && !impl_->rowOf(key)) throw Errore(35601, "Elemento non trovato");
    impl_->selected = std::string(key);
    Refresh();
}

std::string ExplorerBar::SelectedKey() const {
    return impl_->selected;
}

wxRect ExplorerBar::ItemRect(std::string_view key) const {
    const auto row = impl_->rowOf(key);
    if (!row) throw Errore(35601, "Elemento non trovato");
    return impl_->rectOf(*row);
}

std::string ExplorerBar::FocusedKey() const {
    if (!HasFocus() || !impl_->focus || *impl_->focus >= impl_->layout.rows.size()) return {};
    return impl_->keyOf(impl_->layout.rows[*impl_->focus]);
}

bool ExplorerBar::SetFont(const wxFont& font) {
    const bool changed = wxControl::SetFont(font);
    if (changed && impl_) impl_->layOut();
    return changed;
}

wxSize ExplorerBar::SizeFor(const std::vector<ExplorerGroup>& groups) const {
    const int designed = twipsToPixels(impl_->widthTwips, FromDIP(1000) / 1000.0);
    const int width = std::max(designed, explorerWidth(groups, impl_->metrics(designed)));
    return {width, layoutExplorer(groups, impl_->metrics(width)).height};
}

wxSize ExplorerBar::DoGetBestClientSize() const {
    return SizeFor(impl_->groups);
}

ExplorerMetrics ExplorerBar::Impl::metrics(int width) const {
    ExplorerMetrics metrics;
    metrics.width = width;
    metrics.lineHeight = bar.GetCharHeight() + bar.FromDIP(1);
    metrics.icon = bar.FromDIP(iconSide);
    metrics.unit = bar.FromDIP(marginUnit);
    metrics.textWidth = [this](std::string_view text, bool bold) {
        const wxFont font = bold ? bar.GetFont().Bold() : bar.GetFont();
        int textWidth = 0;
        bar.GetTextExtent(toWx(text), &textWidth, nullptr, nullptr, nullptr, &font);
        return textWidth;
    };
    return metrics;
}

wxSize ExplorerBar::Impl::area() const {
    wxSize size = bar.GetClientSize();
    if (scrollBar->IsShown()) size.x -= scrollBar->GetSize().x;
    return size;
}

// The scroll bar takes its room only where the rows do not fit without it.
void ExplorerBar::Impl::layOut() {
    if (stopped > 0) {
        layout = {};
        hover = pressed = std::nullopt;
        return;
    }
    const wxSize size = bar.GetClientSize();
    layout = layoutExplorer(groups, metrics(size.x));
    const int side = scrollBar->GetBestSize().x;
    placeScrollBar(*scrollBar, {size.x - side, 0, side, size.y}, layout.height > size.y);
    if (scrollBar->IsShown()) layout = layoutExplorer(groups, metrics(std::max(0, area().x)));
    const auto gone = [this](const Place& row) { return row && *row >= layout.rows.size(); };
    if (gone(hover)) hover.reset();
    if (gone(pressed)) pressed.reset();
    if (gone(focus)) focus.reset();
    if (bar.HasFocus()) moveFocus(0); // a menu filled under the keyboard
    scrollTo(top);
    bar.InvalidateBestSize();
    bar.Refresh();
}

void ExplorerBar::Impl::scrollTo(int pixels) {
    const int view = bar.GetClientSize().y;
    const int last = std::max(0, layout.height - view);
    const int before = std::exchange(top, std::clamp(pixels, 0, last));
    if (scrollBar->IsShown()) scrollBar->SetScrollbar(top, view, layout.height, view);
    if (top != before) bar.Refresh();
}

void ExplorerBar::Impl::show(std::size_t row) {
    const wxRect place = rectOf(row);
    const int view = bar.GetClientSize().y;
    if (place.y < 0 || place.height > view)
        scrollTo(top + place.y);
    else if (place.GetBottom() >= view)
        scrollTo(top + place.GetBottom() + 1 - view);
}

const std::string& ExplorerBar::Impl::keyOf(const ExplorerRow& row) const {
    const ExplorerGroup& group = groups[row.group];
    return row.IsHeading() ? group.Key : group.Items[row.item].Key;
}

// Counted over the groups, which the layout follows row by row.
ExplorerBar::Impl::Place ExplorerBar::Impl::rowOf(std::string_view key) const {
    std::size_t row = 0;
    for (const ExplorerGroup& group : groups) {
        if (equalsText(group.Key, key)) return row;
        ++row;
        for (const ExplorerItem& item : group.Items) {
            if (equalsText(item.Key, key)) return row;
            ++row;
        }
    }
    return std::nullopt;
}

bool ExplorerBar::Impl::isCommand(const ExplorerRow& row) const {
    return !row.IsHeading() && !groups[row.group].Items[row.item].Note;
}

wxRect ExplorerBar::Impl::rectOf(std::size_t row) const {
    if (row >= layout.rows.size()) return {}; // while redrawing is stopped
    const ExplorerBox& box = layout.rows[row].box;
    return {box.x, box.y - top, box.width, box.height};
}

} // namespace norvel::controls
