<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgPropRadio</name>
    <message>
        <source>标题：</source>
        <translation>Caption:</translation>
    </message>
    <message>
        <source>选中</source>
        <translation>Checked</translation>
    </message>
    <message>
        <source>编组：</source>
        <translation>Group:</translation>
    </message>
    <message>
        <source>回车↙</source>
        <translation>Enter ↙</translation>
    </message>
    <message>
        <source>状态图片</source>
        <translation>State pictures</translation>
    </message>
    <message>
        <source>没点选：</source>
        <translation>Not selected:</translation>
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
        <source>被点选：</source>
        <translation>Selected:</translation>
    </message>
    <message>
        <source>设置尺寸到贴图</source>
        <translation>Size to picture</translation>
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
        <source>按钮被选中</source>
        <translation>Checked</translation>
    </message>
    <message>
        <source>按钮被取消</source>
        <translation>Unchecked</translation>
    </message>
</context>
</TS>
