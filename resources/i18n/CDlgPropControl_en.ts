<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgPropControl</name>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>标记</source>
        <translation>Tag</translation>
    </message>
    <message>
        <source>颜色标记</source>
        <translation>Color tag</translation>
    </message>
    <message>
        <source>显示/隐藏</source>
        <translation>Visible</translation>
    </message>
    <message>
        <source>可用</source>
        <translation>Enabled</translation>
    </message>
    <message>
        <source>锁定</source>
        <translation>Locked</translation>
    </message>
</context>
</TS>
