<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgCmdTest</name>
    <message>
        <source>上一个</source>
        <translation>Previous</translation>
    </message>
    <message>
        <source>下一个</source>
        <translation>Next</translation>
    </message>
    <message>
        <source>区分大小写</source>
        <translation>Match case</translation>
    </message>
    <message>
        <source>全字匹配</source>
        <translation>Whole words</translation>
    </message>
    <message>
        <source>替换</source>
        <translation>Replace</translation>
    </message>
    <message>
        <source>全部替换</source>
        <translation>Replace All</translation>
    </message>
    <message>
        <source>替换为</source>
        <translation>Replace with</translation>
    </message>
    <message>
        <source>运行</source>
        <translation>Run</translation>
    </message>
    <message>
        <source>停止</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>查找</source>
        <translation>Find</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
</TS>
