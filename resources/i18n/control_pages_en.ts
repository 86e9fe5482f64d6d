<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgPropCombo</name>
    <message>
        <source>组合下拉框</source>
        <translation>Combo box</translation>
    </message>
</context>
<context>
    <name>CDlgPropSlider</name>
    <message>
        <source>滑杆</source>
        <translation>Slider</translation>
    </message>
</context>
<context>
    <name>CDlgPropEdit</name>
    <message>
        <source>输入框</source>
        <translation>Edit box</translation>
    </message>
</context>
<context>
    <name>CDlgPropListBox</name>
    <message>
        <source>列表框</source>
        <translation>List box</translation>
    </message>
</context>
<context>
    <name>CDlgPropScrollbar</name>
    <message>
        <source>滚动条</source>
        <translation>Scroll bar</translation>
    </message>
</context>
<context>
    <name>CDlgPropPicture</name>
    <message>
        <source>静态图片</source>
        <translation>Picture</translation>
    </message>
</context>
<context>
    <name>CDlgPropFlash</name>
    <message>
        <source>FLASH</source>
        <translation>Flash</translation>
    </message>
</context>
<context>
    <name>CDlgPropPictureInPicture</name>
    <message>
        <source>画中画</source>
        <translation>Picture in picture</translation>
    </message>
</context>
<context>
    <name>CDlgPropMap</name>
    <message>
        <source>导航图</source>
        <translation>Map</translation>
    </message>
</context>
</TS>
