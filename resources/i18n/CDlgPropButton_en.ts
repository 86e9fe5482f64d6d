<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgPropButton</name>
    <message>
        <source>标题：</source>
        <translation>Caption:</translation>
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
