// The compiled part of fmt: its package has it as a shared library only, which a machine with Maya does not have.
#include <fmt/format-inl.h>

#include <locale>

FMT_BEGIN_NAMESPACE
namespace detail {

template dragonbox::decimal_fp<float> dragonbox::to_decimal(float) noexcept;
template dragonbox::decimal_fp<double> dragonbox::to_decimal(double) noexcept;
template locale_ref::locale_ref(const std::locale&);
template std::locale locale_ref::get<std::locale>() const;
template thousands_sep_result<char> thousands_sep_impl(locale_ref);
template char decimal_point_impl(locale_ref);

} // namespace detail
FMT_END_NAMESPACE
