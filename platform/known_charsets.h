#pragma once

// The character sets that messages are written in, by their names in mail headers. Only these are
// passed to the system: it has converters for hundreds more, some of them with faults that bytes
// from strangers could reach.

#include <algorithm>
#include <array>
#include <string_view>

namespace platform {

struct KnownCharset {
  std::string_view name;  // in lower case
  const char* iconvName;
  unsigned codePage;
};

inline constexpr std::array kKnownCharsets = {
    KnownCharset{"big5", "BIG5-HKSCS", 950},
    KnownCharset{"big5-hkscs", "BIG5-HKSCS", 950},
    KnownCharset{"cp932", "CP932", 932},
    KnownCharset{"cp936", "GBK", 936},
    KnownCharset{"cp949", "UHC", 949},
    KnownCharset{"cp950", "BIG5-HKSCS", 950},
    KnownCharset{"euc-jp", "EUC-JP", 20932},
    KnownCharset{"euc-kr", "UHC", 949},
    KnownCharset{"gb18030", "GB18030", 54936},
    KnownCharset{"gb2312", "GBK", 936},
    KnownCharset{"gb_2312-80", "GBK", 936},
    KnownCharset{"gbk", "GBK", 936},
    KnownCharset{"iso-2022-jp", "ISO-2022-JP", 50220},
    // Written for what is really Windows' set, whose further characters are controls here.
    KnownCharset{"iso-8859-1", "CP1252", 1252},
    KnownCharset{"iso-8859-15", "ISO-8859-15", 28605},
    KnownCharset{"iso-8859-2", "ISO-8859-2", 28592},
    KnownCharset{"iso-8859-5", "ISO-8859-5", 28595},
    KnownCharset{"iso-8859-6", "ISO-8859-6", 28596},
    KnownCharset{"iso-8859-7", "ISO-8859-7", 28597},
    KnownCharset{"iso-8859-8", "ISO-8859-8", 28598},
    KnownCharset{"iso-8859-9", "ISO-8859-9", 28599},
    KnownCharset{"koi8-r", "KOI8-R", 20866},
    KnownCharset{"koi8-u", "KOI8-U", 21866},
    KnownCharset{"ks_c_5601-1987", "UHC", 949},
    KnownCharset{"latin1", "CP1252", 1252},
    KnownCharset{"shift_jis", "CP932", 932},
    KnownCharset{"tis-620", "TIS-620", 874},
    KnownCharset{"windows-1250", "CP1250", 1250},
    KnownCharset{"windows-1251", "CP1251", 1251},
    KnownCharset{"windows-1252", "CP1252", 1252},
    KnownCharset{"windows-1253", "CP1253", 1253},
    KnownCharset{"windows-1254", "CP1254", 1254},
    KnownCharset{"windows-1255", "CP1255", 1255},
    KnownCharset{"windows-1256", "CP1256", 1256},
    KnownCharset{"windows-1257", "CP1257", 1257},
    KnownCharset{"windows-1258", "CP1258", 1258},
    KnownCharset{"windows-31j", "CP932", 932},
    KnownCharset{"windows-874", "CP874", 874},
    KnownCharset{"windows-936", "GBK", 936},
    KnownCharset{"x-gbk", "GBK", 936},
    KnownCharset{"x-sjis", "CP932", 932},
};

/// The index of a set, whatever the case of its name; the number of sets if it is not known.
constexpr std::size_t IndexOfCharset(std::string_view name) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  const auto isSame = [&](const KnownCharset& set) {
    return std::equal(set.name.begin(), set.name.end(), name.begin(), name.end(),
                      [&](char left, char right) { return left == lower(right); });
  };
  return static_cast<std::size_t>(
      std::find_if(kKnownCharsets.begin(), kKnownCharsets.end(), isSame) - kKnownCharsets.begin());
}

}  // namespace platform
