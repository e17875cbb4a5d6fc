// A second recogniser, written only from the rules: it decides in integers, keeps every segment, and cuts the stroke to
// its length at the end. If the two disagree, one of them is wrong.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace kvn::model {

class StrokeOracle {
public:
    // "", or the notice that this sample makes.
    std::string Take(std::int64_t x, std::int64_t y, bool isHeld, bool isCancelHeld) {
        const bool begins = isHeld && !heldBefore;
        heldBefore = isHeld;
        if (!drawing) {
            if (!begins) return "";
            drawing = true;
            segments.clear();
            current = ' ';
            origin = anchor = {x, y};
            return "Started ";
        }
        if (isCancelHeld) {
            drawing = false;
            return "Cancelled ";
        }
        if (!isHeld) {
            drawing = false;
            return "Completed " + Text();
        }
        return Move({x, y});
    }

private:
    struct Place {
        std::int64_t x;
        std::int64_t y;
    };

    std::string Move(Place to) {
        const Place from = current == ' ' ? origin : anchor;
        if (!IsFar(from, to)) return "";
        const char direction = Direction(from, to);
        if (current == ' ') {
            current = direction;
            return "Progress " + Text();
        }
        if (direction != current) {
            segments += current;
            current = ' ';
            origin = to;
        }
        anchor = to;
        return "";
    }

    // At least 50 pixels away, without a square root.
    static bool IsFar(Place a, Place b) {
        const std::int64_t dx = std::abs(a.x - b.x);
        const std::int64_t dy = std::abs(a.y - b.y);
        return dx >= 50 || dy >= 50 || dx * dx + dy * dy >= 2500;
    }

    static char Direction(Place a, Place b) {
        const std::int64_t dx = b.x - a.x;
        const std::int64_t dy = b.y - a.y;
        if (std::abs(dy) > std::abs(dx)) return dy > 0 ? 'D' : 'U';
        return dx > 0 ? 'R' : 'L';
    }

    // The last three finished segments and the one in progress.
    std::string Text() const {
        std::string text = segments.substr(segments.size() - std::min<std::size_t>(segments.size(), 3));
        if (current != ' ') text += current;
        return text;
    }

    bool heldBefore = false;
    bool drawing = false;
    std::string segments;
    char current = ' ';
    Place origin{};
    Place anchor{};
};

}  // namespace kvn::model
