#include "zent/check/plainJson.h"

#include "zent/check/PlainReader.h"

namespace zent {

Read passPlain(const char*& at, const char* end) {
    json ignored;
    return takePlain<false>(at, end, ignored);
}

Read readPlain(const char*& at, const char* end, json& value) {
    return takePlain<true>(at, end, value);
}

Read passAny(const char*& at, const char* end) {
    std::size_t depth = 0;
    for (const char* next = at; next != end; ++next) {
        switch (*next) {
        case '"':
            for (++next; next != end && *next != '"'; ++next) {
                if (*next == '\\' && ++next == end) {
                    return Read::cut;
                }
            }
            if (next == end) {
                return Read::cut;
            }
            break;
        case '{':
        case '[':
            ++depth;
            break;
        case '}':
        case ']':
        case ',':
            if (depth == 0) {
                at = next;
                return Read::whole;
            }
            depth -= *next == ',' ? 0 : 1;
            break;
        default:
            break;
        }
    }
    return Read::cut;
}

const char* passSpace(const char* at, const char* end) {
    while (at != end && (*at == ' ' || *at == '\n' || *at == '\t' || *at == '\r')) {
        ++at;
    }
    return at;
}

} // namespace zent
