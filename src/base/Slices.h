#pragma once

// Several slices of one record as one argument. The state of the program is one record put together
// from slices, and a function takes the slices that it works on and no more. One that works on a
// single slice takes a reference to it; one that works on two takes SlicesOf<First, const Second>,
// which whoever has a record made of both passes as it is:
//
//     void Tell(SlicesOf<Queue, const Status> game) {
//         const Status& status = game;
//         ...
//     }

#include <concepts>

namespace Wirefall {

template <typename Slice>
class SliceReference {
public:
    explicit SliceReference(Slice& slice) : Referred(&slice) {}
    operator Slice&() const { return *Referred; }

private:
    Slice* Referred;
};

/// Refers to the record that it was made from, which must outlive it.
template <typename... Slices>
class SlicesOf : public SliceReference<Slices>... {
public:
    template <typename Whole>
    requires(std::convertible_to<Whole*, Slices*>&&...) SlicesOf(Whole& whole)
        : SliceReference<Slices>(whole)... {}
};

} // namespace Wirefall
