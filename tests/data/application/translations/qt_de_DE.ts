<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>KelTest</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen (qt)</translation>
    </message>
</context>
</TS>
