<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgDesignFont</name>
    <message>
        <source>文字字体</source>
        <translation>Font design</translation>
    </message>
</context>
<context>
    <name>CDlgElementEditor</name>
    <message>
        <source>控件外观</source>
        <translation>Element editor</translation>
    </message>
</context>
<context>
    <name>CDlgGuiManager</name>
    <message>
        <source>整体</source>
        <translation>Interface</translation>
    </message>
    <message>
        <source>窗口</source>
        <translation>Dialogs</translation>
    </message>
    <message>
        <source>导出界面...</source>
        <translation>Export...</translation>
    </message>
    <message>
        <source>装载界面...</source>
        <translation>Import...</translation>
    </message>
    <message>
        <source>合并界面</source>
        <translation>Merge...</translation>
    </message>
    <message>
        <source>新建窗口</source>
        <translation>Create Window</translation>
    </message>
    <message>
        <source>上移</source>
        <translation>Move Up</translation>
    </message>
    <message>
        <source>下移</source>
        <translation>Move Down</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Remove</translation>
    </message>
</context>
<context>
    <name>CDlgGuiManagerCtrl</name>
    <message>
        <source>控件列表</source>
        <translation>Control list</translation>
    </message>
</context>
<context>
    <name>CDlgGuiManagerTimer</name>
    <message>
        <source>时间轴列表</source>
        <translation>Timebar list</translation>
    </message>
</context>
<context>
    <name>CDlgGuiMenu</name>
    <message>
        <source>菜单列表</source>
        <translation>Menu list</translation>
    </message>
</context>
<context>
    <name>CDlgPropControl</name>
    <message>
        <source>控件属性</source>
        <translation>Control properties</translation>
    </message>
</context>
<context>
    <name>CDlgPropDialogAll</name>
    <message>
        <source>窗口属性</source>
        <translation>Dialog properties</translation>
    </message>
</context>
<context>
    <name>CDlgPropMenu</name>
    <message>
        <source>菜单属性</source>
        <translation>Menu properties</translation>
    </message>
</context>
<context>
    <name>CDlgPropTimer</name>
    <message>
        <source>时间轴属性</source>
        <translation>Timebar properties</translation>
    </message>
</context>
<context>
    <name>CDlgStyleManager</name>
    <message>
        <source>风格列表</source>
        <translation>Style list</translation>
    </message>
</context>
<context>
    <name>CDlgTopTimer</name>
    <message>
        <source>时间轴工具</source>
        <translation>Timeline tools</translation>
    </message>
</context>
</TS>
