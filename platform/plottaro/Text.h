#pragma once

#include "platform/plottaro/Color.h"
#include "platform/plottaro/Font.h"

#include <string>

namespace plottaro
{
/** @brief A title: its text, font and colour. */
struct Text
{
  std::string text;
  Font font = Font::defaultFont(12.0);
  Color color = Color::Black();
};
} // namespace plottaro
