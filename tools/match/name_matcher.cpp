#include "match/name_matcher.h"

#include <utility>

#include "language/criterion.h"

namespace dialwright::tools {

NameMatcher::NameMatcher(WindowCriteria criteria, std::size_t stackBytes) : wanted(std::move(criteria)) {
    if (wanted.literal) return;
    titleExpression = CompileCriterion(wanted.title, stackBytes);
    classExpression = CompileCriterion(wanted.className, stackBytes);
}

bool NameMatcher::Takes(const std::wstring& className, const std::wstring& title) const {
    if (wanted.literal) {
        return ContainsLiteral(title.c_str(), wanted.title) && EqualsLiteral(className.c_str(), wanted.className);
    }
    return MatchesWhole(title.c_str(), titleExpression) && MatchesWhole(className.c_str(), classExpression);
}

}  // namespace dialwright::tools
