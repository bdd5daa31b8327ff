<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja">
<context>
    <name>BoolField</name>
    <message>
        <source>on</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>off</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FolderEdit</name>
    <message>
        <source>Browse...</source>
        <translation type="unfinished"></translation>
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
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Locked</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No preference matches.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close &amp;Without Saving</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Restore All...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The preferences could not be saved in %1: %2
They stay in effect until the program ends; the file is as it was before.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pages</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search all pages</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Find by key:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Press a key to see what it does; Backspace shows all.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Dismiss</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Undo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Redo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restore the defaults of all preferences.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Restore the defaults of all %n changed preference(s), on every page?</source>
        <translation type="unfinished">
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>&amp;Restore</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restore All</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PR_XmlReader</name>
    <message>
        <source>A document type stands inside of the root.</source>
        <translation>ルートの中に文書型があります。</translation>
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
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Change %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restore the default of %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Locked by the facility for everybody.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The default of the facility is %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The default of the set %1 is %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The default is %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Changed by you.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not changed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is the shortcut of %2 too.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is the shortcut of %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is the shortcut of %2, which the facility has locked.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Take It From %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 alone would act whenever it is typed outside of a text.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PreferenceSetField</name>
    <message>
        <source>%1 (not installed)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>(none)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PreferenceSetField::Write</name>
    <message>
        <source>(none)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
