#pragma once

#include "platform/plottaro/Symbol.h"

#include <string>
#include <utility>
#include <vector>

class QwtSymbol;

namespace plottaro
{
/** @brief A new Qwt symbol for the marker; marker -1 (or an unknown one) gives no symbol. */
QwtSymbol* CreateQwtSymbol(const Symbol& symbol);
/** @brief The markers a user can choose, by number and name, in the order series take them. */
const std::vector<std::pair<int, std::string>>& MarkerStyles();
/** @brief The line styles a user can choose, by Qt pen style number and name. */
const std::vector<std::pair<int, std::string>>& LineStyles();
} // namespace plottaro
