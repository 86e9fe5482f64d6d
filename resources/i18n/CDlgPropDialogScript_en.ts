<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgPropDialogScript</name>
    <message>
        <source>事件脚本</source>
        <translation>Event scripts</translation>
    </message>
    <message>
        <source>最小化窗口</source>
        <translation>Minimized</translation>
    </message>
    <message>
        <source>删除脚本</source>
        <translation>Remove the script</translation>
    </message>
    <message>
        <source>窗口还原</source>
        <translation>Restored</translation>
    </message>
    <message>
        <source>窗口关闭</source>
        <translation>Closed</translation>
    </message>
    <message>
        <source>窗口移动</source>
        <translation>Moved</translation>
    </message>
</context>
</TS>
