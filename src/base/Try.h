#pragma once

#include <expected>
#include <utility>

/// Unwraps a std::expected or leaves the enclosing function with its error.
///
///     auto root = TRY(storage.root());
///
/// The enclosing function returns a std::expected whose error type can be made from the unwrapped one. An expression of
/// type std::expected<void, E> is used as a statement. The operand is evaluated exactly once.
#define TRY(...)                                                                                                       \
    ({                                                                                                                 \
        auto&& quillary_try_result = (__VA_ARGS__);                                                                    \
        if (!quillary_try_result.has_value()) return std::unexpected(std::move(quillary_try_result).error());          \
        std::move(quillary_try_result).value();                                                                        \
    })
