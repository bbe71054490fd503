#include "TextServices.h"

#include <unicode/calendar.h>
#include <unicode/coll.h>
#include <unicode/gregocal.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/reldatefmt.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <tuple>
#include <utility>

namespace vellmoor::texts {
namespace {

icu::UnicodeString unicode(std::string_view text) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
}

/// Nearly every name of a program or folder is, and needs none of ICU's tables.
bool isAscii(std::string_view text) {
    return std::ranges::none_of(text, [](char c) { return (static_cast<unsigned char>(c) & 0x80U) != 0; });
}

std::string lowerAscii(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

std::string utf8(const icu::UnicodeString& text) {
    std::string out;
    text.toUTF8String(out);
    return out;
}

UDate milliseconds(TimePoint time) {
    return static_cast<UDate>(std::chrono::duration_cast<std::chrono::milliseconds>(time.time_since_epoch()).count());
}

struct Amount {
    int count = 0;
    URelativeDateTimeUnit unit = UDAT_REL_UNIT_SECOND;
};

/// Shorter than any day of any calendar: what is not longer apart is told in hours, whose length never changes.
constexpr double surelyLessThanADay = 22.0 * 60 * 60 * 1000;

Amount largestShortUnit(UDate earlier, UDate later) {
    const auto seconds = static_cast<int>((later - earlier) / 1000);
    if (seconds >= 60 * 60) {
        return {seconds / (60 * 60), UDAT_REL_UNIT_HOUR};
    }
    return seconds >= 60 ? Amount{seconds / 60, UDAT_REL_UNIT_MINUTE} : Amount{seconds, UDAT_REL_UNIT_SECOND};
}

// fieldDifference moves the calendar on by what it answers, so each unit counts what the larger ones left over.
Amount largestUnit(UDate earlier, UDate later, UErrorCode& error) {
    if (later - earlier < surelyLessThanADay) {
        return largestShortUnit(earlier, later);
    }
    constexpr std::array units{
        std::pair{UCAL_YEAR, UDAT_REL_UNIT_YEAR},         std::pair{UCAL_MONTH, UDAT_REL_UNIT_MONTH},
        std::pair{UCAL_WEEK_OF_YEAR, UDAT_REL_UNIT_WEEK}, std::pair{UCAL_DATE, UDAT_REL_UNIT_DAY},
        std::pair{UCAL_HOUR, UDAT_REL_UNIT_HOUR},         std::pair{UCAL_MINUTE, UDAT_REL_UNIT_MINUTE},
        std::pair{UCAL_SECOND, UDAT_REL_UNIT_SECOND}};
    icu::GregorianCalendar calendar(error);
    calendar.setTime(earlier, error);
    for (const auto& [field, unit] : units) {
        const int count = calendar.fieldDifference(later, field, error);
        if (U_FAILURE(error) || count != 0) {
            return {count, unit};
        }
    }
    return {};
}

/// The texts of a language. A formatter reads ICU's tables when it is made, which takes longer than anything else that
/// a scan asks about a path; and few amounts are different.
class RelativeTexts {
public:
    explicit RelativeTexts(const char* language) : language_(language) {}
    std::string of(const Amount& amount, bool isPast) {
        const std::lock_guard lock(alone_);
        const auto [known, isNew] = texts_.try_emplace({amount.unit, amount.count, isPast});
        if (isNew) {
            known->second = made(amount, isPast);
        }
        return known->second;
    }

private:
    std::string made(const Amount& amount, bool isPast) {
        UErrorCode error = U_ZERO_ERROR;
        if (!formatter_) {
            formatter_.emplace(icu::Locale(language_), nullptr, UDAT_STYLE_SHORT, UDISPCTX_CAPITALIZATION_NONE, error);
        }
        icu::UnicodeString text;
        formatter_->formatNumeric(isPast ? -static_cast<double>(amount.count) : amount.count, amount.unit, text, error);
        return utf8(text);
    }

    const char* language_;
    std::mutex alone_;
    std::optional<icu::RelativeDateTimeFormatter> formatter_;
    std::map<std::tuple<URelativeDateTimeUnit, int, bool>, std::string> texts_;
};

icu::UnicodeString folded(std::string_view text) {
    UErrorCode error = U_ZERO_ERROR;
    icu::UnicodeString result = unicode(text).foldCase();
    const icu::Normalizer2* composed = icu::Normalizer2::getNFCInstance(error);
    return U_SUCCESS(error) ? composed->normalize(result, error) : result;
}

// The POSIX locale of ICU sorts all capitals before all small letters, whatever the strength.
std::unique_ptr<icu::Collator> userCollator() {
    UErrorCode error = U_ZERO_ERROR;
    const icu::Locale user = icu::Locale::getDefault();
    const bool isPosix = std::string_view(user.getVariant()) == "POSIX";
    std::unique_ptr<icu::Collator> collator(
        icu::Collator::createInstance(isPosix ? icu::Locale::getRoot() : user, error));
    if (U_FAILURE(error)) {
        return nullptr;
    }
    collator->setStrength(icu::Collator::SECONDARY); // accents count, case does not
    return collator;
}

} // namespace

bool isUtf8(std::string_view text) {
    if (isAscii(text)) {
        return true;
    }
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF8(nullptr, 0, nullptr, text.data(), static_cast<std::int32_t>(text.size()), &error);
    return error != U_INVALID_CHAR_FOUND; // with no room for the result it still reads everything
}

std::string relativeDate(TimePoint date, TimePoint now, AppLanguage language) {
    static RelativeTexts english("en");
    static RelativeTexts chinese("zh-Hans");
    const bool isPast = date <= now;
    UErrorCode error = U_ZERO_ERROR;
    const Amount amount = largestUnit(milliseconds(isPast ? date : now), milliseconds(isPast ? now : date), error);
    return (language == AppLanguage::english ? english : chinese).of(amount, isPast);
}

int compareNames(std::string_view a, std::string_view b) {
    static const std::unique_ptr<icu::Collator> collator = userCollator();
    if (!collator) { // ICU without its data
        return unicode(a).caseCompare(unicode(b), U_FOLD_CASE_DEFAULT);
    }
    UErrorCode error = U_ZERO_ERROR;
    return collator->compareUTF8({a.data(), static_cast<std::int32_t>(a.size())},
                                 {b.data(), static_cast<std::int32_t>(b.size())}, error);
}

bool containsPhrase(std::string_view text, std::string_view phrase) {
    if (isAscii(text) && isAscii(phrase)) {
        return !phrase.empty() && lowerAscii(text).contains(lowerAscii(phrase));
    }
    return !phrase.empty() && folded(text).indexOf(folded(phrase)) >= 0;
}

std::string lowerCase(std::string_view text) {
    if (isAscii(text)) {
        return lowerAscii(text);
    }
    return utf8(unicode(text).toLower(icu::Locale::getRoot()));
}

std::string lettersAndDigits(std::string_view text) {
    if (isAscii(text)) {
        std::string lower = lowerAscii(text);
        std::erase_if(lower, [](char c) { return (c < 'a' || c > 'z') && (c < '0' || c > '9'); });
        return lower;
    }
    const icu::UnicodeString lower = unicode(text).toLower(icu::Locale::getRoot());
    icu::UnicodeString kept;
    for (std::int32_t index = 0; index < lower.length(); index = lower.moveIndex32(index, 1)) {
        const UChar32 character = lower.char32At(index);
        if ((U_GET_GC_MASK(character) & (U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK)) != 0) {
            kept.append(character);
        }
    }
    return utf8(kept);
}

} // namespace vellmoor::texts
