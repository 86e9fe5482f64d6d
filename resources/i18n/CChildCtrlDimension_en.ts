<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CChildCtrlDimension</name>
    <message>
        <source>X</source>
        <translation>X</translation>
    </message>
    <message>
        <source>Y</source>
        <translation>Y</translation>
    </message>
    <message>
        <source>宽</source>
        <translation>W</translation>
    </message>
    <message>
        <source>高</source>
        <translation>H</translation>
    </message>
    <message>
        <source>保持宽高比</source>
        <translation>Keep ratio</translation>
    </message>
    <message>
        <source>Tab 顺序</source>
        <translation>Tab order</translation>
    </message>
    <message>
        <source>按 Tab 键时从 1 起依次到达；0 排在有编号的控件之后，按从上到下、从左到右的顺序</source>
        <translation>The Tab key goes from 1 up; 0 comes after all numbers, row by row from the top left</translation>
    </message>
    <message>
        <source>位置与大小</source>
        <translation>Place and Size</translation>
    </message>
    <message>
        <source>旋转</source>
        <translation>Rotation</translation>
    </message>
    <message>
        <source>角度(度)</source>
        <translation>Degrees</translation>
    </message>
    <message>
        <source>中心 X</source>
        <translation>Center X</translation>
    </message>
    <message>
        <source>中心回到正中</source>
        <translation>Center in the Middle</translation>
    </message>
    <message>
        <source>对齐方式</source>
        <translation>Alignment</translation>
    </message>
    <message>
        <source>缩放方式</source>
        <translation>Scale mode</translation>
    </message>
    <message>
        <source>固定大小</source>
        <translation>Fixed size</translation>
    </message>
    <message>
        <source>随窗口缩放</source>
        <translation>With the dialog</translation>
    </message>
    <message>
        <source>左上</source>
        <translation>Top left</translation>
    </message>
    <message>
        <source>上中</source>
        <translation>Top</translation>
    </message>
    <message>
        <source>右上</source>
        <translation>Top right</translation>
    </message>
    <message>
        <source>左中</source>
        <translation>Left</translation>
    </message>
    <message>
        <source>中心</source>
        <translation>Center</translation>
    </message>
    <message>
        <source>右中</source>
        <translation>Right</translation>
    </message>
    <message>
        <source>左下</source>
        <translation>Bottom left</translation>
    </message>
    <message>
        <source>下中</source>
        <translation>Bottom</translation>
    </message>
    <message>
        <source>右下</source>
        <translation>Bottom right</translation>
    </message>
    <message>
        <source>透明度与颜色</source>
        <translation>Transparency and Color</translation>
    </message>
    <message>
        <source>透明度</source>
        <translation>Transparency</translation>
    </message>
    <message>
        <source>颜色</source>
        <translation>Color</translation>
    </message>
    <message>
        <source>0 不透明，1 完全透明</source>
        <translation>0 opaque, 1 not to be seen</translation>
    </message>
    <message>
        <source>绘制的内容乘以此颜色</source>
        <translation>What is drawn is multiplied by this color</translation>
    </message>
</context>
</TS>
