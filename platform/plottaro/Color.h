#pragma once

#include <QColor>

#include <cstdint>

namespace plottaro
{
/** @brief An RGBA colour, from bytes or from floats in [0, 1]. */
class Color
{
public:
  constexpr Color() = default;
  constexpr Color(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a = 255)
      : m_R(r)
      , m_G(g)
      , m_B(b)
      , m_A(a)
  {
  }
  Color(float r, float g, float b, float a = 1.0f)
      : m_R(FromUnit(r))
      , m_G(FromUnit(g))
      , m_B(FromUnit(b))
      , m_A(FromUnit(a))
  {
  }

  static constexpr Color Black() { return Color(std::uint8_t(0), std::uint8_t(0), std::uint8_t(0)); }
  static constexpr Color White() { return Color(std::uint8_t(255), std::uint8_t(255), std::uint8_t(255)); }
  static Color FromQColor(const QColor& color)
  {
    return Color(static_cast<std::uint8_t>(color.red()), static_cast<std::uint8_t>(color.green()),
                 static_cast<std::uint8_t>(color.blue()), static_cast<std::uint8_t>(color.alpha()));
  }

  constexpr std::uint8_t red() const { return m_R; }
  constexpr std::uint8_t green() const { return m_G; }
  constexpr std::uint8_t blue() const { return m_B; }
  constexpr std::uint8_t alpha() const { return m_A; }
  QColor toQColor() const { return QColor(m_R, m_G, m_B, m_A); }

  constexpr bool operator==(const Color& other) const
  {
    return m_R == other.m_R && m_G == other.m_G && m_B == other.m_B && m_A == other.m_A;
  }
  constexpr bool operator!=(const Color& other) const { return !(*this == other); }

private:
  static std::uint8_t FromUnit(float value)
  {
    const float clamped = value < 0.0f ? 0.0f : (value > 1.0f ? 1.0f : value);
    return static_cast<std::uint8_t>(clamped * 255.0f + 0.5f);
  }

  std::uint8_t m_R = 0;
  std::uint8_t m_G = 0;
  std::uint8_t m_B = 0;
  std::uint8_t m_A = 255;
};
} // namespace plottaro
