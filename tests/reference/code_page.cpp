#include "tests/reference/code_page.h"

#include <string_view>
#include <vector>

#include "tests/reference/code_page_chart.h"

namespace corvelle::reference {
namespace {

constexpr char16_t kEmpty = u'.';
constexpr int kUnknown = u'?';

// Characters without a code of their own that the platform writes as another that looks like them, in runs from
// `first` on; a full stop where one has its own code or none at all.
struct LookAlikes {
  char16_t first;
  std::u16string_view written_as;
};

constexpr LookAlikes kLookAlikes[] = {
    {0x00A2, u"￠￡.￥|...a..-.ˉ..23′μ...1o.....àá......èéê.ìí..D.òó.....ùú.üYT...a"},
    {0x00F0, u"e"},
    {0x00FD, u"yt.ā"},
    {0x0112, u"ē.......ě"},
    {0x012A, u"ī"},
    {0x014C, u"ō"},
    {0x016A, u"ū"},
    {0x01C1, u"∥"},
    {0x01CD, u"ǎ.ǐ.ǒ.ǔ.ǖ.ǘ.ǚ.ǜ"},
    {0x203E, u"￣"},
    {0x2218, u"°"},
    {0x223C, u"～"},
    {0x3192, u"一二三四上中下甲乙丙丁天地人"},
    {0x322A, u"月火水木金土日.有社名特财祝劳代呼学监企资协祭休自至"},
    {0x3280, u"一二三四五六七八九十月火水木金土日株有社名特财祝劳秘男女适优.注项休写......医宗学监企资协夜"},
    {0xF900,
     u"豈更車賈滑串句龜龜契金喇奈懶癩羅蘿螺裸邏樂洛烙珞落酪駱亂卵欄爛蘭鸞嵐濫藍襤拉臘蠟廊朗浪狼.來冷勞"
     u"擄櫓爐盧老蘆虜路露魯鷺碌祿綠菉錄鹿論壟弄籠聾牢磊賂雷壘屢樓淚漏累縷陋勒肋凜凌稜綾菱陵讀拏樂諾丹寧"
     u"怒率異北磻便復不泌數索參塞省葉說殺辰沈拾若掠略亮兩.梁糧良諒量勵呂女廬旅濾礪閭驪麗黎力曆歷轢年憐戀"
     u"撚漣煉璉.練聯輦蓮連鍊列劣咽烈裂說廉念捻殮簾獵令囹寧嶺怜玲瑩羚聆鈴零靈領例禮醴隸惡了僚寮尿料樂燎療"
     u"蓼遼龍暈阮劉杻柳流溜琉留硫紐類六戮陸倫崙淪輪律慄栗率隆利吏履易李梨泥理痢罹.裡里離匿溺吝燐璘藺.鱗"
     u"麟林淋臨立笠粒狀炙識什茶刺切度拓糖宅洞暴輻行降見廓....塚.晴..凞豬益.神祥福靖精羽...諸..逸都...飯"
     u"飼館鶴"},
};

class CodePage {
 public:
  CodePage() : codes_(0x10000, kUnknown) {
    single_bytes();
    chart();
    private_use();
    for (const LookAlikes& run : kLookAlikes) look_alikes(run);
  }

  int code_of(char16_t character) const { return codes_[character]; }

 private:
  void single_bytes() {
    for (int code = 0; code < 0x80; ++code) codes_[static_cast<std::size_t>(code)] = code;
    codes_[u'€'] = 0x80;
    codes_[0xF8F5] = 0xFF;
  }

  // Every cell of the chart by lead and trail byte.
  template <class Visit>
  static void cells(int first_lead, int last_lead, int first_trail, int last_trail, Visit visit) {
    for (int lead = first_lead; lead <= last_lead; ++lead) {
      const char16_t* row = kChartRows[static_cast<std::size_t>(lead - 0x81)];
      for (int trail = first_trail; trail <= last_trail; ++trail) {
        if (trail == 0x7F) continue;
        visit(lead * 256 + trail, row[trail - 0x40 - (trail > 0x7F ? 1 : 0)]);
      }
    }
  }

  void chart() {
    cells(0x81, 0xFE, 0x40, 0xFE, [this](int code, char16_t character) {
      if (character != kEmpty) codes_[character] = code;
    });
  }

  // The private use area fills the three user-defined areas of the chart and then, in the order of the codes, every
  // other cell that is empty.
  void private_use() {
    std::vector<bool> taken(0x10000);
    char16_t next = 0xE000;
    const auto fill = [&](int code, char16_t character) {
      if (character != kEmpty || taken[static_cast<std::size_t>(code)]) return;
      taken[static_cast<std::size_t>(code)] = true;
      codes_[next++] = code;
    };
    cells(0xAA, 0xAF, 0xA1, 0xFE, fill);
    cells(0xF8, 0xFE, 0xA1, 0xFE, fill);
    cells(0xA1, 0xA7, 0x40, 0xA0, fill);
    cells(0x81, 0xFE, 0x40, 0xFE, fill);
  }

  void look_alikes(const LookAlikes& run) {
    for (std::size_t i = 0; i < run.written_as.size(); ++i) {
      if (run.written_as[i] != kEmpty) codes_[run.first + i] = codes_[run.written_as[i]];
    }
  }

  std::vector<int> codes_;
};

char16_t character_of_byte(int byte) {
  if (byte < 0x80) return static_cast<char16_t>(byte);
  if (byte == 0x80) return u'€';
  if (byte == 0xFF) return 0xF8F5;
  return u'?';  // a lead byte that no trail byte follows
}

}  // namespace

std::int16_t ansi_code(char16_t character) {
  static const CodePage code_page;
  const int code = code_page.code_of(character);
  return static_cast<std::int16_t>(code > 0x7FFF ? code - 0x10000 : code);
}

std::u16string decoded(std::int32_t code) {
  if (code <= 0xFF) return {character_of_byte(code)};
  return {character_of_byte(code / 256), character_of_byte(code % 256)};
}

char16_t upper_case(char16_t character) {
  switch (character) {
    case u'ð': return u'Ð';
    case u'ý': return u'Ý';
    case u'þ': return u'Þ';
    default: return character >= u'a' && character <= u'z' ? static_cast<char16_t>(character - 32) : character;
  }
}

}  // namespace corvelle::reference
