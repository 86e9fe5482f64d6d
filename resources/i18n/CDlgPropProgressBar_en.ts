<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgPropProgressBar</name>
    <message>
        <source>进度百分比</source>
        <translation>Percent</translation>
    </message>
    <message>
        <source>进度条总量</source>
        <translation>Total</translation>
    </message>
    <message>
        <source>进度条缩进值</source>
        <translation>Inset</translation>
    </message>
    <message>
        <source>进度条 整体显示</source>
        <translation>Filling grows</translation>
    </message>
    <message>
        <source>进度条 百分比显示</source>
        <translation>Show the percentage</translation>
    </message>
    <message>
        <source>进度条渲染模式:缩放贴图</source>
        <translation>Stretch the picture</translation>
    </message>
    <message>
        <source>文字阴影渲染</source>
        <translation>Shadow of the text</translation>
    </message>
    <message>
        <source>整数显示</source>
        <translation>Whole numbers</translation>
    </message>
    <message>
        <source>自定义显示信息</source>
        <translation>Show a message</translation>
    </message>
    <message>
        <source>自定义显示信息的内容</source>
        <translation>The message</translation>
    </message>
    <message>
        <source>在需要显示数值的地方键入&lt;num&gt;</source>
        <translation>Type &lt;num&gt; where the value goes</translation>
    </message>
    <message>
        <source>在需要显示总量的地方键入&lt;total&gt;</source>
        <translation>Type &lt;total&gt; where the total goes</translation>
    </message>
    <message>
        <source>在需要显示百分比的地方键入&lt;percent&gt;</source>
        <translation>Type &lt;percent&gt; for the percentage</translation>
    </message>
    <message>
        <source>例：目前进度&lt;percent&gt;</source>
        <translation>Example: done &lt;percent&gt;</translation>
    </message>
    <message>
        <source>进度图片：</source>
        <translation>Picture:</translation>
    </message>
    <message>
        <source>选择图片</source>
        <translation>Choose a picture</translation>
    </message>
    <message>
        <source>清除图片</source>
        <translation>Remove the picture</translation>
    </message>
</context>
</TS>
