<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgTopTable</name>
    <message>
        <source>左对齐</source>
        <translation>Align Left Edges</translation>
    </message>
    <message>
        <source>中垂线</source>
        <translation>Align Horizontal Centers</translation>
    </message>
    <message>
        <source>右对齐</source>
        <translation>Align Right Edges</translation>
    </message>
    <message>
        <source>顶对齐</source>
        <translation>Align Top Edges</translation>
    </message>
    <message>
        <source>水平中线</source>
        <translation>Align Vertical Centers</translation>
    </message>
    <message>
        <source>底对齐</source>
        <translation>Align Bottom Edges</translation>
    </message>
    <message>
        <source>等宽</source>
        <translation>Same Width</translation>
    </message>
    <message>
        <source>等高</source>
        <translation>Same Height</translation>
    </message>
    <message>
        <source>等尺寸</source>
        <translation>Same Size</translation>
    </message>
    <message>
        <source>水平均布</source>
        <translation>Distribute Horizontally</translation>
    </message>
    <message>
        <source>垂直均布</source>
        <translation>Distribute Vertically</translation>
    </message>
    <message>
        <source>屏幕左侧对齐</source>
        <translation>Align to the Screen's Left Side</translation>
    </message>
    <message>
        <source>屏幕右侧对齐</source>
        <translation>Align to the Screen's Right Side</translation>
    </message>
    <message>
        <source>屏幕上侧对齐</source>
        <translation>Align to the Screen's Top Side</translation>
    </message>
    <message>
        <source>屏幕下侧对齐</source>
        <translation>Align to the Screen's Bottom Side</translation>
    </message>
    <message>
        <source>屏幕水平居中对齐</source>
        <translation>Center Horizontally on the Screen</translation>
    </message>
    <message>
        <source>屏幕垂直居中对齐</source>
        <translation>Center Vertically on the Screen</translation>
    </message>
    <message>
        <source>标尺</source>
        <translation>Rulers</translation>
    </message>
    <message>
        <source>捕捉</source>
        <translation>Snap</translation>
    </message>
    <message>
        <source>切换坐标尺显示模式</source>
        <translation>Coordinate Display Mode</translation>
    </message>
    <message>
        <source>显示/隐藏辅助线</source>
        <translation>Show or Hide Guide Lines</translation>
    </message>
    <message>
        <source>切换选择模式</source>
        <translation>Selection Mode</translation>
    </message>
</context>
</TS>
