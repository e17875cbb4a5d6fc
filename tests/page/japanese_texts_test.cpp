// The module's Japanese texts, each at its number and its control: two that are swapped would still be Japanese.
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "tests/page/module_texts.h"
#include "tests/support/module_under_test.h"

namespace kvn::test {
namespace {

const std::map<UINT, std::wstring> kJapaneseTexts = {
    {14, L"%d 個を超えて登録することはできません。"},
    {133, L"共有チャームを開く"},
    {134, L"設定チャームを開く"},
    {135, L"デバイス チャームを開く"},
    {136, L"セカンド ディスプレイ チャームを開く"},
    {137, L"検索チャームを開く"},
    {138, L"コンピューターの簡単操作センターを開く"},
    {139, L"検索チャームを開いて設定を検索"},
    {140, L"クイック リンク メニューを開く"},
    {141, L"アプリ バーを表示"},
    {142, L"ナレーターを起動"},
    {143, L"デスクトップを表示"},
    {144, L"画面の向きをロック"},
    {145, L"アプリの切り替え画面を表示"},
    {146, L"入力言語の切り替え"},
    {147, L"チャームを開く"},
    {148, L"アプリを順に切り替え"},
    {203, L"左クリック"},
    {204, L"右クリック"},
    {205, L"ホイール ボタン"},
    {206, L"- ボタン (戻るボタン)"},
    {207, L"+ ボタン (進むボタン)"},
    {208, L"水平スクロールの速度"},
    {210, L"ヘルプ ファイルを開けませんでした。"},
    {211, L"左クリックが設定されていません。"},
    {212, L"オフ"},
    {213, L"左チルト"},
    {214, L"右チルト"},
    {215, L"スクロール速度"},
    {216, L"回転速度"},
    {217, L"回転数"},
    {218, L"ジェスチャ機能は既に別のボタンに割り当てられています。"},
    {219, L"ボタン機能の割り当て"},
    {220, L"ジェスチャ機能の割り当て"},
    {221, L"軌跡"},
    {222, L"機能"},
    {223, L"説明"},
    {224, L"無効"},
    {225, L"プロファイル"},
    {226, L"ファイル名"},
    {227, L"場所"},
    {228, L"プロファイルが選択されていません。"},
    {229, L"複数のプロファイルが選択されています。"},
    {230, L"既に登録されています。"},
    {231, L"ほかのプロファイルで使用されています。"},
    {232, L"プログラムが選択されていません。"},
    {233, L"プロファイルの追加"},
    {234, L"プロファイルの削除"},
    {235, L"プロファイル名の変更"},
    {236, L"プロファイルのコピー"},
    {237, L"ファイルを開く"},
    {238, L"ジェスチャが選択されていません。"},
    {239, L"このジェスチャは既に登録されています。"},
    {240, L"既定のプロファイルは削除できません。"},
    {241, L"既定のプロファイルの名前は変更できません。"},
    {242, L"このプロファイル名は既に使用されています。"},
    {400, L"左クリック"},
    {401, L"右クリック"},
    {402, L"戻る (Internet Explorer)"},
    {403, L"進む (Internet Explorer)"},
    {404, L"アプリケーションの切り替え"},
    {405, L"ウィンドウを閉じる"},
    {406, L"ウィンドウの最大化"},
    {407, L"ウィンドウの最小化"},
    {408, L"クイック/オート スクロール"},
    {414, L"マイ コンピューター"},
    {424, L"スタート ボタン"},
    {425, L"Web ブラウザー"},
    {426, L"エクスプローラー"},
    {427, L"コントロール パネル"},
    {428, L"プリンターの設定"},
    {429, L"ダブルクリック"},
    {430, L"フリップ 3D"},
    {431, L"拡大鏡"},
    {433, L"左スクロール"},
    {434, L"右スクロール"},
    {435, L"ジェスチャ機能"},
    {1000, L"次の設定値は正しくないため、既定値に戻します。"},
    {1002, L"現在の設定を初期値に戻します。"},
    {1004, L"KORVEN マウス設定ツール"},
    {1005, L"マウスの設定を取得できませんでした。"},
    {1006, L"設定に失敗しました。"},
    {1007, L"ジェスチャを登録または編集するには、マウスのボタンにジェスチャ機能を割り当ててください。"},
    {1008, L"削除してもよろしいですか?"},
    {1013, L"開始"},
};

// The Japanese for each English text of the dialogs. A text that is not listed is the same in both languages.
const std::map<std::wstring, std::wstring> kTranslations = {
    {L"Profile", L"プロファイル"},
    {L"Edit Profile", L"プロファイルの編集"},
    {L"Button settings", L"ボタンの設定"},
    {L"Left button", L"左ボタン"},
    {L"Center button", L"中央ボタン"},
    {L"Right button", L"右ボタン"},
    {L"Tilt left", L"左チルト"},
    {L"Tilt right", L"右チルト"},
    {L"Button 5", L"ボタン 5"},
    {L"Button 4", L"ボタン 4"},
    {L"Slow", L"遅く"},
    {L"Horizontal scroll speed", L"水平スクロールの速度"},
    {L"Fast", L"速く"},
    {L"Flying scroll", L"フライング スクロール"},
    {L"Number of revolutions", L"回転数"},
    {L"Revolution speed:", L"回転速度:"},
    {L"Scroll speed:", L"スクロール速度:"},
    {L"Return to initial values", L"初期値に戻す"},
    {L"Help", L"ヘルプ"},
    {L"Gesture", L"ジェスチャ"},
    {L"Add", L"追加"},
    {L"Delete", L"削除"},
    {L"Edit", L"編集"},
    {L"Edit gesture", L"ジェスチャの編集"},
    {L"Input gesture", L"ジェスチャの入力"},
    {L"Functions", L"機能"},
    {L"Instructions", L"説明"},
    {L"Cancel", L"キャンセル"},
    {L"Register arbitrary key", L"任意のキーの登録"},
    {L"Input 1:", L"入力 1:"},
    {L"Input 2:", L"入力 2:"},
    {L"Input 3:", L"入力 3:"},
    {L"Clear", L"クリア"},
    {L"Change name", L"名前の変更"},
    {L"Copy", L"コピー"},
    {L"Allocation program", L"割り当てるプログラム"},
    {L"Add new profile", L"新しいプロファイルの追加"},
    {L"Select allocation program", L"割り当てるプログラムの選択"},
    {L"Select the allocation program for this profile.", L"このプロファイルに割り当てるプログラムを選択してください。"},
    {L"Program", L"プログラム"},
    {L"Select window", L"ウィンドウの選択"},
    {L"Reference", L"参照"},
    {L"Register allocation program", L"割り当てるプログラムの登録"},
    {L"Register the following programs?", L"次のプログラムを登録しますか?"},
};

std::wstring Translated(const std::wstring& english) {
    const auto found = kTranslations.find(english);
    return found == kTranslations.end() ? english : found->second;
}

class JapaneseTextsTest : public testing::Test {
protected:
    ModuleUnderTest module;
};

TEST_F(JapaneseTextsTest, HaveTheirNumbers) {
    const auto english = TextsIn(module.Handle(), kEnglish);
    for (const auto& [id, text] : TextsIn(module.Handle(), kJapanese)) {
        const auto expected = kJapaneseTexts.find(id);
        EXPECT_EQ(text, expected == kJapaneseTexts.end() ? english.at(id) : expected->second) << id;
    }
}

TEST_F(JapaneseTextsTest, AreOnTheirControls) {
    for (const LPCWSTR dialog : kDialogNames) {
        SCOPED_TRACE(DialogName(dialog));
        const DialogTemplate english = TemplateIn(module.Handle(), dialog, kEnglish);
        const DialogTemplate japanese = TemplateIn(module.Handle(), dialog, kJapanese);
        EXPECT_EQ(japanese.caption, Translated(english.caption));
        ASSERT_EQ(japanese.controls.size(), english.controls.size());
        for (std::size_t i = 0; i < english.controls.size(); ++i) {
            EXPECT_EQ(japanese.controls[i].text, Translated(english.controls[i].text)) << english.controls[i].id;
        }
    }
}

}  // namespace
}  // namespace kvn::test
