<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
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
    <message>
        <source>新建控件</source>
        <translation>New Control</translation>
    </message>
    <message>
        <source>普通按钮</source>
        <translation>Button</translation>
    </message>
    <message>
        <source>复选框</source>
        <translation>Check Box</translation>
    </message>
    <message>
        <source>单选框</source>
        <translation>Radio</translation>
    </message>
    <message>
        <source>输入框</source>
        <translation>Edit Box</translation>
    </message>
    <message>
        <source>组合下拉框</source>
        <translation>Combo Box</translation>
    </message>
    <message>
        <source>滑杆</source>
        <translation>Slider</translation>
    </message>
    <message>
        <source>静态文本</source>
        <translation>Static Text</translation>
    </message>
    <message>
        <source>滚动条</source>
        <translation>Scroll Bar</translation>
    </message>
    <message>
        <source>列表框</source>
        <translation>List Box</translation>
    </message>
    <message>
        <source>信息显示框</source>
        <translation>Info Box</translation>
    </message>
    <message>
        <source>静态图片</source>
        <translation>Picture</translation>
    </message>
    <message>
        <source>图片按钮</source>
        <translation>Pic Button</translation>
    </message>
    <message>
        <source>FLASH</source>
        <translation>Flash</translation>
    </message>
    <message>
        <source>进度条</source>
        <translation>Progress</translation>
    </message>
    <message>
        <source>画中画</source>
        <translation>Pic in Pic</translation>
    </message>
    <message>
        <source>导航图</source>
        <translation>Map</translation>
    </message>
    <message>
        <source>列表框筛选</source>
        <translation>List Filter</translation>
    </message>
    <message>
        <source>窗口筛选</source>
        <translation>Dialog</translation>
    </message>
    <message>
        <source>类型筛选</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>搜索</source>
        <translation>Search</translation>
    </message>
    <message>
        <source>删除控件</source>
        <translation>Remove</translation>
    </message>
    <message>
        <source>置顶</source>
        <translation>Set Top</translation>
    </message>
    <message>
        <source>置底</source>
        <translation>Set Bottom</translation>
    </message>
    <message>
        <source>切换控件所在窗口</source>
        <translation>Switch Dialog</translation>
    </message>
    <message>
        <source>GUI控件事件脚本清理</source>
        <translation>Clean Up Event Scripts</translation>
    </message>
</context>
</TS>
