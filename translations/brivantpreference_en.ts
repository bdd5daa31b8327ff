<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>PR_PreferenceDialog</name>
    <message numerus="yes">
        <source>Restore the defaults of all %n changed preference(s), on every page?</source>
        <translation>
            <numerusform>Restore the default of the %n changed preference?</numerusform>
            <numerusform>Restore the defaults of all %n changed preferences, on every page?</numerusform>
        </translation>
    </message>
</context>
</TS>
