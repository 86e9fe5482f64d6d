<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgPropDialog</name>
    <message>
        <source>名称：</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>窗口标题：</source>
        <translation>Title:</translation>
    </message>
    <message>
        <source>显示/隐藏</source>
        <translation>Visible</translation>
    </message>
    <message>
        <source>标题栏</source>
        <translation>Caption</translation>
    </message>
    <message>
        <source>显示框体</source>
        <translation>Frame</translation>
    </message>
    <message>
        <source>最小化按钮</source>
        <translation>Minimize</translation>
    </message>
    <message>
        <source>可移动</source>
        <translation>Movable</translation>
    </message>
    <message>
        <source>关闭按钮</source>
        <translation>Close button</translation>
    </message>
    <message>
        <source>最小化到底部</source>
        <translation>To bottom</translation>
    </message>
    <message>
        <source>永远在最上面</source>
        <translation>Always on top</translation>
    </message>
    <message>
        <source>位置</source>
        <translation>Position</translation>
    </message>
    <message>
        <source>X</source>
        <translation>X</translation>
    </message>
    <message>
        <source>Y</source>
        <translation>Y</translation>
    </message>
    <message>
        <source>W</source>
        <translation>W</translation>
    </message>
    <message>
        <source>H</source>
        <translation>H</translation>
    </message>
    <message>
        <source>保持宽高比</source>
        <translation>Keep the ratio</translation>
    </message>
    <message>
        <source>标题栏宽度：</source>
        <translation>Caption height:</translation>
    </message>
    <message>
        <source>边框宽度：</source>
        <translation>Border width:</translation>
    </message>
    <message>
        <source>对齐方式</source>
        <translation>Alignment</translation>
    </message>
    <message>
        <source>根据窗口比例对话框</source>
        <translation>Scale with the window</translation>
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
        <source>渲染到贴图</source>
        <translation>Render to texture</translation>
    </message>
    <message>
        <source>设置贴图</source>
        <translation>Set texture</translation>
    </message>
    <message>
        <source>取消绑定贴图</source>
        <translation>Remove the binding</translation>
    </message>
    <message>
        <source>背景颜色：</source>
        <translation>Background:</translation>
    </message>
    <message>
        <source>背景颜色</source>
        <translation>Background</translation>
    </message>
    <message>
        <source>支持鼠标交互</source>
        <translation>Takes the mouse</translation>
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
