// Any failure, for operations that pass on whatever went wrong below them.
#pragma once

#include <QString>

#include <any>
#include <concepts>
#include <type_traits>
#include <utility>

namespace wrapio {

/// A value that holds one error of any type with a `description()`, and gives it back to those who know its type.
class AnyError {
public:
    template <typename Error>
        requires(!std::same_as<std::remove_cvref_t<Error>, AnyError>) && requires(const Error& e) {
            { e.description() } -> std::convertible_to<QString>;
        }
    AnyError(Error error)  // NOLINT(google-explicit-constructor): an error converts like a thrown one
        : m_description(error.description()), m_error(std::move(error)) {}

    /// What went wrong, for people.
    [[nodiscard]] const QString& description() const { return m_description; }

    /// The error itself, or null when it is of another type.
    template <typename Error>
    [[nodiscard]] const Error* as() const {
        return std::any_cast<Error>(&m_error);
    }

private:
    QString m_description;
    std::any m_error;
};

}  // namespace wrapio
