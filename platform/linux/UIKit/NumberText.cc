#include "UIKit/NumberText.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace Tarvik::Vorn::Host {

std::string NumberText(double number) {
    if (std::isnan(number)) {
        return "nan"; // The sign of a NaN prints too, and means nothing.
    }
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%g", number);
    return text.data();
}

std::string NumberList(std::initializer_list<double> numbers) {
    std::string list;
    for (const double number : numbers) {
        list += list.empty() ? "[" : ",";
        list += NumberText(number);
    }
    return list + ']';
}

} // namespace Tarvik::Vorn::Host
