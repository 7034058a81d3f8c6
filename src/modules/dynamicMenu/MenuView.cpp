#include "modules/dynamicMenu/MenuView.h"

#include "platform/text/Text.h"

namespace torvex {

MenuView MenuView::of(std::string_view mode) {
    return {twinOf(mode), !text::trim(mode).empty()};
}

}  // namespace torvex
