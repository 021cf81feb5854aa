<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR">
<context>
    <name>Kel_LanguageDialog</name>
    <message>
        <source>English</source>
        <comment>The native name of this language</comment>
        <translation>Français</translation>
    </message>
</context>
</TS>
