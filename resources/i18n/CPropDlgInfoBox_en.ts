<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CPropDlgInfoBox</name>
    <message>
        <source>行高</source>
        <translation>Line height</translation>
    </message>
    <message>
        <source>最多行数</source>
        <translation>Most lines</translation>
    </message>
    <message>
        <source>测试</source>
        <translation>Test</translation>
    </message>
</context>
</TS>
