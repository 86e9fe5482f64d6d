<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgPropButtonST</name>
    <message>
        <source>标题：</source>
        <translation>Caption:</translation>
    </message>
    <message>
        <source>状态图片</source>
        <translation>State pictures</translation>
    </message>
    <message>
        <source>普通状态：</source>
        <translation>Normal:</translation>
    </message>
    <message>
        <source>选择图片</source>
        <translation>Choose a picture</translation>
    </message>
    <message>
        <source>清除图片</source>
        <translation>Clear the picture</translation>
    </message>
    <message>
        <source>鼠标经过：</source>
        <translation>Mouse over:</translation>
    </message>
    <message>
        <source>按下状态：</source>
        <translation>Pressed:</translation>
    </message>
    <message>
        <source>设置尺寸到贴图</source>
        <translation>Size to picture</translation>
    </message>
    <message>
        <source>注释</source>
        <translation>Annotation</translation>
    </message>
    <message>
        <source>注释模式</source>
        <translation>Annotation mode</translation>
    </message>
    <message>
        <source>X缩进：</source>
        <translation>X offset:</translation>
    </message>
    <message>
        <source>Y缩进：</source>
        <translation>Y offset:</translation>
    </message>
    <message>
        <source>事件脚本</source>
        <translation>Event scripts</translation>
    </message>
    <message>
        <source>鼠标点击</source>
        <translation>Click</translation>
    </message>
    <message>
        <source>删除脚本</source>
        <translation>Remove the script</translation>
    </message>
    <message>
        <source>鼠标移入</source>
        <translation>Mouse In</translation>
    </message>
    <message>
        <source>鼠标移出</source>
        <translation>Mouse Out</translation>
    </message>
    <message>
        <source>鼠标左键按下</source>
        <translation>Left Down</translation>
    </message>
    <message>
        <source>鼠标左键弹起</source>
        <translation>Left Up</translation>
    </message>
</context>
</TS>
