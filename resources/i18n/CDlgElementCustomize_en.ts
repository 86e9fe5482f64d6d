<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgElementCustomize</name>
    <message>
        <source>外观</source>
        <translation>Looks</translation>
    </message>
    <message>
        <source>元素</source>
        <translation>Element</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>State</translation>
    </message>
    <message>
        <source>选择图片...</source>
        <translation>Choose Picture...</translation>
    </message>
    <message>
        <source>着色</source>
        <translation>Tint</translation>
    </message>
    <message>
        <source>文字</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>颜色</source>
        <translation>Color</translation>
    </message>
    <message>
        <source>字体</source>
        <translation>Font</translation>
    </message>
    <message>
        <source>字号</source>
        <translation>Size</translation>
    </message>
    <message>
        <source>粗体</source>
        <translation>Bold</translation>
    </message>
    <message>
        <source>斜体</source>
        <translation>Italic</translation>
    </message>
    <message>
        <source>重置此状态</source>
        <translation>Reset State</translation>
    </message>
    <message>
        <source>全部重置</source>
        <translation>Reset All</translation>
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
