// Every text that a user sees: the Chinese text is the key, the current language decides what is answered.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace vellmoor {

enum class AppLanguage : std::uint8_t { chinese, english };

inline constexpr std::array allAppLanguages{AppLanguage::chinese, AppLanguage::english};

/// "zh" or "en".
std::string_view rawValue(AppLanguage language);
std::optional<AppLanguage> appLanguage(std::string_view rawValue);

/// Whose wordings are used: some sentences name things that exist on one system only.
enum class TextSet : std::uint8_t { Mac, Linux };

/// One argument of a text: a text for %@ or an integer for %d.
class TextArgument {
public:
    TextArgument(std::string text) : value_(std::move(text)) {}        // NOLINT(*-explicit-*)
    TextArgument(std::string_view text) : value_(std::string(text)) {} // NOLINT(*-explicit-*)
    TextArgument(const char* text) : value_(std::string(text)) {}      // NOLINT(*-explicit-*)
    template <class Integer>
        requires std::is_integral_v<Integer>
    TextArgument(Integer number) : value_(static_cast<std::int64_t>(number)) {} // NOLINT(*-explicit-*)

    /// The text, or the number in plain decimal form.
    [[nodiscard]] std::string text() const;

private:
    std::variant<std::string, std::int64_t> value_;
};

/// The text lookup; every member may be called from any thread.
class L {
public:
    /// The localised text for the Chinese `key`; the key itself when it has no entry.
    static std::string tr(std::string_view key);
    /// The same, with %@ and %d replaced by the arguments in order; a placeholder without argument stays as it is.
    template <class... Arguments>
        requires(sizeof...(Arguments) > 0)
    static std::string tr(std::string_view key, Arguments&&... arguments) {
        return format(tr(key), {TextArgument(std::forward<Arguments>(arguments))...});
    }

    static AppLanguage language();
    /// Called by the language manager only (and by programs without one).
    static void setLanguage(AppLanguage language);
    /// Chosen once at start-up, with the system layout.
    static void setTextSet(TextSet set);

private:
    static std::string format(const std::string& pattern, std::initializer_list<TextArgument> arguments);
};

} // namespace vellmoor
