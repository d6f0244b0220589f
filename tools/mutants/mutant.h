#pragma once

// Put in front of every file of the mutated core: the place of each mutant asks here whether it is the one that runs.

#include <bitset>
#include <cstdlib>

namespace nrv::mutant {

inline const int Wanted = [] {
    const char* const number = std::getenv("NRV718_MUTANT");
    return number != nullptr ? std::atoi(number) : 0;
}();
inline std::bitset<65536> Reached;

inline bool Is(int number) {
    Reached.set(static_cast<unsigned>(number));
    return number == Wanted;
}
/// Which of a row of statements comes at a place: numbers from `first` on swap it with the next one.
inline int Turn(int first, int place) {
    Reached.set(static_cast<unsigned>(first + place));
    return first + place == Wanted ? place + 1 : place > 0 && first + place - 1 == Wanted ? place - 1 : place;
}
template <class T>
auto Plus(int number, T value) {
    return Is(number) ? static_cast<T>(value + 1) : value;
}
inline const char* Text(int number, const char* text) {
    return Is(number) ? "" : text;
}
template <class A, class B>
bool Less(int number, const A& a, const B& b) {
    return Is(number) ? a <= b : a < b;
}
template <class A, class B>
bool LessEqual(int number, const A& a, const B& b) {
    return Is(number) ? a < b : a <= b;
}
template <class A, class B>
bool Greater(int number, const A& a, const B& b) {
    return Is(number) ? a >= b : a > b;
}
template <class A, class B>
bool GreaterEqual(int number, const A& a, const B& b) {
    return Is(number) ? a > b : a >= b;
}

} // namespace nrv::mutant
