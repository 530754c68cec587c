// Numbers as arguments of recorded calls and in descriptions. For the stand-ins' own use.
#pragma once

#include <initializer_list>
#include <string>

namespace Tarvik::Vorn::Host {

// Six significant digits at most and none that says nothing: "0.5", "1e+20", "inf". Every NaN is "nan".
std::string NumberText(double number);

// "[0,0,150,4]".
std::string NumberList(std::initializer_list<double> numbers);

} // namespace Tarvik::Vorn::Host
