// Filtering, value lists and sorting over a host's own recordset, as an operator does them.
#include "tests/windows/hosts/CppHost.h"

namespace norvel::tests {
namespace {

using com::ComPtr;

// Letters and digits by the keys that bear them; a blank.
void type(const std::string& text) {
    for (const char c : text)
        press(static_cast<WORD>(c));
}

void toFirstFilterCell() {
    pressHolding(VK_SHIFT, VK_TAB);
}

// From the filter bar to the rows that it leaves, and the first of them chosen.
void chooseFirst(const Shown& window) {
    press(VK_DOWN);
    window.chooseByEnter();
}

std::wstring answerTo(const std::function<void(const Shown&)>& steps) {
    const ComPtr<_Ricerca> ricerca = createRicerca();
    prepare(*ricerca.get(), clients(50));
    EXPECT_EQ(ricerca->put_FilterBar(Text(L"1")), S_OK);
    EXPECT_EQ(search(*ricerca.get(), [&] { steps(Shown::titled(caption)); }), S_OK);
    return answerOf(*ricerca.get());
}

TEST(CppFilter, WhatIsTypedInAFilterCellFiltersTheHostsRecordset) {
    EXPECT_EQ(answerTo([](const Shown& window) {
                  toFirstFilterCell();
                  press(VK_TAB); // nome
                  type("CLIENTE 37");
                  chooseFirst(window);
              }),
              L"37");
}

TEST(CppFilter, EscClearsTheCellAndTheFilter) {
    EXPECT_EQ(answerTo([](const Shown& window) {
                  toFirstFilterCell();
                  press(VK_TAB);
                  type("CLIENTE 37");
                  press(VK_ESCAPE);
                  chooseFirst(window);
              }),
              L"1");
}

TEST(CppFilter, ACellThatIsNoNumberLeavesTheFilterAsItWas) {
    EXPECT_EQ(answerTo([](const Shown& window) {
                  toFirstFilterCell();
                  type("4X");
                  chooseFirst(window);
              }),
              L"1");
}

TEST(CppFilter, AValueChosenFromTheListFiltersByIt) {
    EXPECT_EQ(answerTo([](const Shown& window) {
                  toFirstFilterCell();
                  press(VK_F4);
                  press(VK_END);
                  press(VK_RETURN);
                  chooseFirst(window);
              }),
              L"50");
}

TEST(CppFilter, AClickOnAHeadingSortsTheHostsRecordset) {
    EXPECT_EQ(answerTo([](const Shown& window) {
                  window.click(window.rows(), 60, 10);
                  window.click(window.rows(), 60, 10);
                  pressHolding(VK_CONTROL, VK_HOME);
                  window.chooseByEnter();
              }),
              L"50");
}

} // namespace
} // namespace norvel::tests
