<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgManagerAlign</name>
    <message>
        <source>对齐</source>
        <translation>Align</translation>
    </message>
    <message>
        <source>尺寸</source>
        <translation>Size</translation>
    </message>
    <message>
        <source>分布</source>
        <translation>Distribution</translation>
    </message>
    <message>
        <source>垂直_左</source>
        <translation>Align Left Edges</translation>
    </message>
    <message>
        <source>垂直_中</source>
        <translation>Align Horizontal Centers</translation>
    </message>
    <message>
        <source>垂直_右</source>
        <translation>Align Right Edges</translation>
    </message>
    <message>
        <source>水平_顶</source>
        <translation>Align Top Edges</translation>
    </message>
    <message>
        <source>水平_中</source>
        <translation>Align Vertical Centers</translation>
    </message>
    <message>
        <source>水平_底</source>
        <translation>Align Bottom Edges</translation>
    </message>
    <message>
        <source>水平匹配</source>
        <translation>Same Width</translation>
    </message>
    <message>
        <source>垂直匹配</source>
        <translation>Same Height</translation>
    </message>
    <message>
        <source>整体匹配</source>
        <translation>Same Size</translation>
    </message>
    <message>
        <source>水平均匀</source>
        <translation>Distribute Horizontally</translation>
    </message>
    <message>
        <source>垂直均匀</source>
        <translation>Distribute Vertically</translation>
    </message>
</context>
</TS>
