<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja">
<context>
    <name>FieldType</name>
    <message>
        <source>(empty)</source>
        <translation>(空)</translation>
    </message>
    <message>
        <source>on</source>
        <translation>オン</translation>
    </message>
    <message>
        <source>off</source>
        <translation>オフ</translation>
    </message>
    <message>
        <source>(none)</source>
        <translation>(なし)</translation>
    </message>
    <message>
        <source>%1 (not installed)</source>
        <translation>%1 (未インストール)</translation>
    </message>
</context>
<context>
    <name>FolderEdit</name>
    <message>
        <source>Browse...</source>
        <translation>参照...</translation>
    </message>
</context>
<context>
    <name>PL_FileSlot</name>
    <message>
        <source>It is no regular file.</source>
        <translation>通常のファイルではありません。</translation>
    </message>
    <message>
        <source>The file would be too large to be read.</source>
        <translation>読み込めないほど大きなファイルになります。</translation>
    </message>
    <message>
        <source>Another program changed the file.</source>
        <translation>別のプログラムがファイルを変更しました。</translation>
    </message>
    <message>
        <source>The backup cannot be written.</source>
        <translation>バックアップを書き込めません。</translation>
    </message>
    <message>
        <source>The new file cannot be put in the place of the old one.</source>
        <translation>新しいファイルを古いファイルと置き換えられません。</translation>
    </message>
</context>
<context>
    <name>PL_InputFile</name>
    <message>
        <source>is not a regular file</source>
        <translation>通常のファイルではありません</translation>
    </message>
    <message>
        <source>is larger than %1 MB</source>
        <translation>%1 MB を超えています</translation>
    </message>
</context>
<context>
    <name>PR_PrefItem</name>
    <message>
        <source>Internal</source>
        <translation>内部</translation>
    </message>
    <message>
        <source>All</source>
        <translation>すべて</translation>
    </message>
    <message>
        <source>General</source>
        <translation>一般</translation>
    </message>
    <message>
        <source>Drawing Mode</source>
        <translation>描画モード</translation>
    </message>
    <message>
        <source>Sceneplanning</source>
        <translation>シーンプランニング</translation>
    </message>
    <message>
        <source>Node View</source>
        <translation>ノードビュー</translation>
    </message>
    <message>
        <source>Exposure Sheet</source>
        <translation>タイムシート</translation>
    </message>
    <message>
        <source>Color Management</source>
        <translation>カラーマネジメント</translation>
    </message>
    <message>
        <source>Highlighting</source>
        <translation>ハイライト</translation>
    </message>
    <message>
        <source>Element Manager</source>
        <translation>エレメントマネージャー</translation>
    </message>
    <message>
        <source>Function Editor</source>
        <translation>関数エディター</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>ライブラリ</translation>
    </message>
    <message>
        <source>Playback View</source>
        <translation>再生ビュー</translation>
    </message>
    <message>
        <source>Timeline</source>
        <translation>タイムライン</translation>
    </message>
    <message>
        <source>Sound</source>
        <translation>サウンド</translation>
    </message>
    <message>
        <source>Tree View</source>
        <translation>ツリービュー</translation>
    </message>
    <message>
        <source>Render View</source>
        <translation>レンダービュー</translation>
    </message>
    <message>
        <source>Scanning</source>
        <translation>スキャン</translation>
    </message>
    <message>
        <source>Render</source>
        <translation>レンダリング</translation>
    </message>
    <message>
        <source>No short description available</source>
        <translation>短い説明はありません</translation>
    </message>
    <message>
        <source>No long description available</source>
        <translation>詳しい説明はありません</translation>
    </message>
    <message>
        <source>This preference has been locked at the facility-wide level.
 Please see your system administrator for details.</source>
        <translation>この環境設定は、施設全体でロックされています。
詳しくは、システム管理者にお問い合わせください。</translation>
    </message>
</context>
<context>
    <name>PR_Preference</name>
    <message>
        <source>Unable to open preference file (%1)</source>
        <extracomment>While reading. %1 is a path, here and in all messages below.</extracomment>
        <translation>環境設定ファイルを開けません（%1）</translation>
    </message>
    <message>
        <source>Unable to parse prefereces file (%1)</source>
        <translation>環境設定ファイルを解析できません（%1）</translation>
    </message>
    <message>
        <source>TUPreference::load: No preference file specified</source>
        <translation>TUPreference::load: 環境設定ファイルが指定されていません</translation>
    </message>
    <message>
        <source>Preference file not found: %1</source>
        <translation>環境設定ファイルが見つかりません: %1</translation>
    </message>
    <message>
        <source>Default preference file not found: %1 </source>
        <translation>既定の環境設定ファイルが見つかりません: %1 </translation>
    </message>
    <message>
        <source>Preference file %1 is empty or corrupted.
Backup preference file has been restored.</source>
        <translation>環境設定ファイル %1 は空であるか、破損しています。
バックアップの環境設定ファイルを復元しました。</translation>
    </message>
    <message>
        <source>Preference file %1 is empty or corrupted.
Default preferences will be loaded instead.</source>
        <translation>環境設定ファイル %1 は空であるか、破損しています。
代わりに既定の環境設定を読み込みます。</translation>
    </message>
    <message>
        <source>Unable to open preference file: %1</source>
        <extracomment>While saving.</extracomment>
        <translation>環境設定ファイルを開けません: %1</translation>
    </message>
    <message>
        <source>Error while writing preference file: %1</source>
        <translation>環境設定ファイルの書き込み中にエラーが発生しました: %1</translation>
    </message>
    <message>
        <source>Could not initialize preferences.</source>
        <translation>環境設定を初期化できませんでした。</translation>
    </message>
    <message>
        <source>The store has no preference file.</source>
        <translation>この環境設定には保存先のファイルがありません。</translation>
    </message>
    <message>
        <source>Preference file %1 is empty or corrupted.
Its backup has been read instead.</source>
        <translation>環境設定ファイル %1 は空であるか、破損しています。
代わりにバックアップを読み込みました。</translation>
    </message>
    <message>
        <source>Left out, as XML cannot hold their keys: %1</source>
        <translation>キーを XML に書き込めないため保存されませんでした: %1</translation>
    </message>
    <message>
        <source>Left out, as no load would take it: an element with too many attributes or too deeply nested.</source>
        <translation>読み込めなくなるため保存されませんでした: 属性が多すぎる要素、または入れ子が深すぎる要素があります。</translation>
    </message>
    <message>
        <source>The store is being loaded.</source>
        <translation>環境設定を読み込んでいます。</translation>
    </message>
    <message>
        <source>Saved without a lock on the file.</source>
        <translation>ファイルをロックせずに保存しました。</translation>
    </message>
</context>
<context>
    <name>PR_PreferenceDialog</name>
    <message>
        <source>Chan&amp;ged</source>
        <translation>変更済み(&amp;G)</translation>
    </message>
    <message>
        <source>&amp;Locked</source>
        <translation>ロック済み(&amp;L)</translation>
    </message>
    <message>
        <source>No preference matches.</source>
        <translation>一致する環境設定はありません。</translation>
    </message>
    <message>
        <source>Close &amp;Without Saving</source>
        <translation>保存せずに閉じる(&amp;W)</translation>
    </message>
    <message>
        <source>&amp;Restore All...</source>
        <translation>すべて戻す(&amp;R)...</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>環境設定</translation>
    </message>
    <message>
        <source>The preferences could not be saved in %1: %2
They stay in effect until the program ends; the file is as it was before.</source>
        <translation>環境設定を %1 に保存できませんでした: %2
プログラムの終了までは有効です。ファイルは以前のままです。</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>ページ</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>ショートカット</translation>
    </message>
    <message>
        <source>Search all pages</source>
        <translation>すべてのページを検索</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>検索</translation>
    </message>
    <message>
        <source>&amp;Find by key:</source>
        <translation>キーで検索(&amp;F):</translation>
    </message>
    <message>
        <source>Press a key to see what it does; Backspace shows all.</source>
        <translation>キーを押すと、その機能を表示します。Backspace キーですべてを表示します。</translation>
    </message>
    <message>
        <source>&amp;Dismiss</source>
        <translation>閉じる(&amp;D)</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>元に戻す</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>やり直す</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>閉じる(&amp;C)</translation>
    </message>
    <message>
        <source>Restore the defaults of all preferences.</source>
        <translation>すべての環境設定を初期値に戻します。</translation>
    </message>
    <message numerus="yes">
        <source>Restore the defaults of all %n changed preference(s), on every page?</source>
        <translation>
            <numerusform>すべてのページの変更済みの環境設定 %n 件を初期値に戻しますか?</numerusform>
        </translation>
    </message>
    <message>
        <source>&amp;Restore</source>
        <translation>戻す(&amp;R)</translation>
    </message>
    <message>
        <source>Restore All</source>
        <translation>すべて戻す</translation>
    </message>
</context>
<context>
    <name>PR_XmlReader</name>
    <message>
        <source>A document type stands inside of the root or behind it.</source>
        <translation>ルートの中または後に文書型があります。</translation>
    </message>
    <message>
        <source>Elements are nested more than %1 deep.</source>
        <translation>要素の入れ子が %1 段を超えています。</translation>
    </message>
    <message>
        <source>The element has more than %1 attributes.</source>
        <translation>要素の属性が %1 個を超えています。</translation>
    </message>
    <message>
        <source>Entities bring too many elements.</source>
        <translation>実体がもたらす要素が多すぎます。</translation>
    </message>
    <message>
        <source>Entities multiply the text.</source>
        <translation>実体がテキストを膨らませています。</translation>
    </message>
    <message>
        <source>The encoding &quot;%1&quot; is not known.</source>
        <translation>エンコーディング「%1」は不明です。</translation>
    </message>
    <message>
        <source>The text is not in the encoding &quot;%1&quot;.</source>
        <translation>テキストはエンコーディング「%1」ではありません。</translation>
    </message>
    <message>
        <source>There are more than %1 elements.</source>
        <translation>要素が %1 個を超えています。</translation>
    </message>
    <message>
        <source>The document type of the file&apos;s own is larger than %1 KB.</source>
        <translation>ファイル自身の文書型が %1 KB を超えています。</translation>
    </message>
</context>
<context>
    <name>PreferenceRow</name>
    <message>
        <source>Restore %1</source>
        <translation>%1 を初期値に戻す</translation>
    </message>
    <message>
        <source>Change %1</source>
        <translation>%1 の変更</translation>
    </message>
    <message>
        <source>Restore the default of %1</source>
        <translation>%1 を初期値に戻す</translation>
    </message>
    <message>
        <source>Locked by the facility for everybody.</source>
        <translation>施設によって全員に対してロックされています。</translation>
    </message>
    <message>
        <source>The default of the facility is %1.</source>
        <translation>施設の初期値は %1 です。</translation>
    </message>
    <message>
        <source>The default of the set %1 is %2.</source>
        <translation>セット %1 の初期値は %2 です。</translation>
    </message>
    <message>
        <source>The default is %1.</source>
        <translation>初期値は %1 です。</translation>
    </message>
    <message>
        <source>Changed by you.</source>
        <translation>変更済みです。</translation>
    </message>
    <message>
        <source>Not changed.</source>
        <translation>変更されていません。</translation>
    </message>
    <message>
        <source>%1 is the shortcut of %2 too.</source>
        <translation>%1 は %2 のショートカットでもあります。</translation>
    </message>
    <message>
        <source>%1 is the shortcut of %2.</source>
        <translation>%1 は %2 のショートカットです。</translation>
    </message>
    <message>
        <source>%1 is the shortcut of %2, which the facility has locked.</source>
        <translation>%1 は、施設がロックした %2 のショートカットです。</translation>
    </message>
    <message>
        <source>Take It From %1</source>
        <translation>%1 から取る</translation>
    </message>
    <message>
        <source>%1 alone would act whenever it is typed outside of a text.</source>
        <translation>%1 だけでは、テキスト以外で入力するたびに動作します。</translation>
    </message>
    <message>
        <source>Use %1</source>
        <translation>%1 を使う</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
</context>
</TS>
