<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>QApplication</name>
    <message>
        <source>Exception: %1</source>
        <comment>error report</comment>
        <translation>Ausnahme: %1</translation>
    </message>
    <message>
        <source>Unknown exception in Kel_Application</source>
        <comment>default error message</comment>
        <translation>Unbekannte Ausnahme in Kel_Application</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Gut</translation>
    </message>
</context>
</TS>
