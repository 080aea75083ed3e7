// host/preferences/choice_page.hpp: PSListItemsController: the page on which one of a row's values is chosen.
#pragma once

namespace wispen::preferences {

/// It lists the values of the row that opened it, ticks the one that the row has, and gives a chosen one to
/// the row's setter.
void define_choice_page();

}  // namespace wispen::preferences
