#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace zetui::pixmill {

struct Color
{
    std::uint8_t red = 0, green = 0, blue = 0, alpha = 255;

    friend bool operator==(const Color&, const Color&) = default;
};

struct Font
{
    /// A family's name; empty for the toolkit's own.
    std::string name;
    /// In pixels.
    float size = 0;
};

/// How a text that is too long is shortened, by the number that callers pass through.
enum class TextTruncation : int
{
    Never = 0,
    Beginning = 1,
    End = 2,
    Middle = 3,
};

/// A shape to stroke: rectangles' edges in the coordinates of the view that is drawn.
class Path;
using PathP = std::shared_ptr<Path>;

/// Lines are drawn with this.
struct Pen
{
    Color color;
    float width = 1;
};
using PenP = std::shared_ptr<Pen>;

} // namespace zetui::pixmill
