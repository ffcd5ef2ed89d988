// text_benchmark [--benchmark_…]
//
// Measures comparing and hashing a path by canonical equivalence. The paths have about 40 to 80
// characters in several scripts.
#include "text/Text.h"

#include <benchmark/benchmark.h>

#include <string>

namespace velmora {
namespace {

constexpr const char* ascii = "/home/anna/Documents/Holiday photos/Summer at the lake/week 2.jpeg";
constexpr const char* latin =
    "/home/anna/\u00dcbungen/Caf\u00e9 \u00e0 la cr\u00e8me/Gr\u00f6\u00dfe/na\u00efve Stra\u00dfe/"
    "\u00e9t\u00e9 2025.jpeg";
constexpr const char* latinDecomposed =
    "/home/anna/U\u0308bungen/Cafe\u0301 a\u0300 la cre\u0300me/Gro\u0308\u00dfe/nai\u0308ve "
    "Stra\u00dfe/e\u0301te\u0301 2025.jpeg";
constexpr const char* vietnamese =
    "/home/anna/Tài liệu/Ảnh kỳ nghỉ/Mùa hè ở hồ/tuần thứ hai/ảnh.jpeg";
constexpr const char* cyrillic =
    "/home/anna/Документы/Фотографии/Летний отдых на озере/вторая неделя.jpeg";
constexpr const char* arabic =
    "/home/anna/المستندات/صور العطلة/الصيف في البحيرة/الأسبوع الثاني.jpeg";
constexpr const char* devanagari = "/home/anna/दस्तावेज़/छुट्टियों की तस्वीरें/झील पर गर्मी/दूसरा सप्ताह.jpeg";
constexpr const char* thai = "/home/anna/เอกสาร/ภาพถ่ายวันหยุด/ฤดูร้อนที่ทะเลสาบ/สัปดาห์ที่สอง.jpeg";
constexpr const char* kana =
    "/home/anna/ドキュメント/しゃしん/みずうみのなつやすみ/だいにしゅうかん.jpeg";
constexpr const char* hangul =
    "/home/anna/\ubb38\uc11c/\ud734\uac00 \uc0ac\uc9c4/\ud638\uc218\uc5d0\uc11c\uc758 "
    "\uc5ec\ub984/\uc0ac\uc9c4.jpeg";
constexpr const char* hangulDecomposed =
    "/home/anna/\u1106\u116e\u11ab\u1109\u1165/\u1112\u1172\u1100\u1161 "
    "\u1109\u1161\u110c\u1175\u11ab/\u1112\u1169\u1109\u116e\u110b\u1166\u1109\u1165\u110b\u1174 "
    "\u110b\u1167\u1105\u1173\u11b7/\u1109\u1161\u110c\u1175\u11ab.jpeg";
constexpr const char* han = "/home/anna/文件/假期照片/湖边的夏天/第二周/照片编辑后.jpeg";
constexpr const char* emoji =
    "/home/anna/📁 Files/🏖️ Holiday/👩‍👩‍👧‍👦 Family/🇩🇪🇫🇷 "
    "Trip/🎉.jpeg";

void hash(benchmark::State& state, const char* path) {
  const std::string text = path;
  for ([[maybe_unused]] auto iteration : state) {
    benchmark::DoNotOptimize(canonicalHash(text));
  }
}

void compare(benchmark::State& state, const char* path, const char* otherSpelling) {
  const std::string a = path;
  const std::string b = otherSpelling;
  if (!canonicallyEqual(a, b)) {
    state.SkipWithError("not two spellings of one path");
  }
  for ([[maybe_unused]] auto iteration : state) {
    benchmark::DoNotOptimize(canonicallyEqual(a, b));
  }
}

BENCHMARK_CAPTURE(hash, ascii, ascii);
BENCHMARK_CAPTURE(hash, latin, latin);
BENCHMARK_CAPTURE(hash, latin_decomposed, latinDecomposed);
BENCHMARK_CAPTURE(hash, vietnamese, vietnamese);
BENCHMARK_CAPTURE(hash, cyrillic, cyrillic);
BENCHMARK_CAPTURE(hash, arabic, arabic);
BENCHMARK_CAPTURE(hash, devanagari, devanagari);
BENCHMARK_CAPTURE(hash, thai, thai);
BENCHMARK_CAPTURE(hash, kana, kana);
BENCHMARK_CAPTURE(hash, hangul, hangul);
BENCHMARK_CAPTURE(hash, hangul_decomposed, hangulDecomposed);
BENCHMARK_CAPTURE(hash, han, han);
BENCHMARK_CAPTURE(hash, emoji, emoji);

BENCHMARK_CAPTURE(compare, ascii, ascii, ascii);
BENCHMARK_CAPTURE(compare, thai, thai, thai);
BENCHMARK_CAPTURE(compare, latin_with_decomposed, latin, latinDecomposed);
BENCHMARK_CAPTURE(compare, hangul_with_decomposed, hangul, hangulDecomposed);

}  // namespace
}  // namespace velmora

BENCHMARK_MAIN();
