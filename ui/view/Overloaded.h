#pragma once

namespace zd::view {

// One visitor made of several lambdas, for std::visit over a look.
template <class... F>
struct Overloaded : F... {
    using F::operator()...;
};
template <class... F>
Overloaded(F...) -> Overloaded<F...>;

}  // namespace zd::view
