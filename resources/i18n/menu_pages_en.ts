<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgGuiMenu</name>
    <message>
        <source>菜单</source>
        <translation>Menu</translation>
    </message>
    <message>
        <source>新建菜单</source>
        <translation>New Menu</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
</context>
<context>
    <name>CDlgPropMenu</name>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
</context>
<context>
    <name>CChildMenuItem</name>
    <message>
        <source>添加项</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>在当前项之后添加</source>
        <translation>Adds an item behind the current one</translation>
    </message>
    <message>
        <source>添加子项</source>
        <translation>Add Inside</translation>
    </message>
    <message>
        <source>添加到当前项的子菜单</source>
        <translation>Adds an item to the submenu of the current one</translation>
    </message>
    <message>
        <source>分隔线</source>
        <translation>Separator</translation>
    </message>
    <message>
        <source>添加分隔线</source>
        <translation>Adds a separator</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>删除当前项及其子菜单</source>
        <translation>Deletes the current item and its submenu</translation>
    </message>
    <message>
        <source>上移</source>
        <translation>Up</translation>
    </message>
    <message>
        <source>上移（Ctrl+↑）</source>
        <translation>Up (Ctrl+Up)</translation>
    </message>
    <message>
        <source>下移</source>
        <translation>Down</translation>
    </message>
    <message>
        <source>下移（Ctrl+↓）</source>
        <translation>Down (Ctrl+Down)</translation>
    </message>
    <message>
        <source>缩进</source>
        <translation>In</translation>
    </message>
    <message>
        <source>移入上一项的子菜单（Ctrl+→）</source>
        <translation>Into the submenu of the item above (Ctrl+Right)</translation>
    </message>
    <message>
        <source>凸出</source>
        <translation>Out</translation>
    </message>
    <message>
        <source>移出子菜单（Ctrl+←）</source>
        <translation>Out of the submenu (Ctrl+Left)</translation>
    </message>
    <message>
        <source>当前项</source>
        <translation>Current item</translation>
    </message>
    <message>
        <source>文本：</source>
        <translation>Text:</translation>
    </message>
    <message>
        <source>快捷键：</source>
        <translation>Shortcut:</translation>
    </message>
    <message>
        <source>显示在右侧的文字</source>
        <translation>The text at the right end</translation>
    </message>
    <message>
        <source>图标：</source>
        <translation>Icon:</translation>
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
        <source>函数：</source>
        <translation>Function:</translation>
    </message>
    <message>
        <source>选中该项时运行的函数</source>
        <translation>Runs when the item is chosen</translation>
    </message>
    <message>
        <source>编辑函数</source>
        <translation>Edit the function</translation>
    </message>
    <message>
        <source>可用</source>
        <translation>Enabled</translation>
    </message>
    <message>
        <source>可勾选</source>
        <translation>Checkable</translation>
    </message>
    <message>
        <source>已勾选</source>
        <translation>Checked</translation>
    </message>
</context>
<context>
    <name>CChildMenuDesign</name>
    <message>
        <source>尺寸（像素）</source>
        <translation>Sizes (pixels)</translation>
    </message>
    <message>
        <source>项高：</source>
        <translation>Item:</translation>
    </message>
    <message>
        <source>分隔线高：</source>
        <translation>Separator:</translation>
    </message>
    <message>
        <source>最小宽：</source>
        <translation>Min. width:</translation>
    </message>
    <message>
        <source>最大宽：</source>
        <translation>Max. width:</translation>
    </message>
    <message>
        <source>图标列宽：</source>
        <translation>Icons:</translation>
    </message>
    <message>
        <source>内边距：</source>
        <translation>Padding:</translation>
    </message>
    <message>
        <source>文字</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>字体：</source>
        <translation>Font:</translation>
    </message>
    <message>
        <source>字号：</source>
        <translation>Size:</translation>
    </message>
    <message>
        <source>粗体</source>
        <translation>Bold</translation>
    </message>
    <message>
        <source>斜体</source>
        <translation>Italic</translation>
    </message>
    <message>
        <source>正常</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>选中</source>
        <translation>Hover</translation>
    </message>
    <message>
        <source>禁用</source>
        <translation>Disabled</translation>
    </message>
    <message>
        <source>文字颜色</source>
        <translation>Text color</translation>
    </message>
    <message>
        <source>图片</source>
        <translation>Pictures</translation>
    </message>
    <message>
        <source>背景：</source>
        <translation>Background:</translation>
    </message>
    <message>
        <source>选中行：</source>
        <translation>Selected row:</translation>
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
        <source>图片着色</source>
        <translation>Picture color</translation>
    </message>
</context>
<context>
    <name>CDlgMenuPick</name>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>CChildDialogMenu</name>
    <message>
        <source>右键菜单：</source>
        <translation>Right click:</translation>
    </message>
    <message>
        <source>选择菜单</source>
        <translation>Choose a menu</translation>
    </message>
    <message>
        <source>取消绑定</source>
        <translation>Unbind</translation>
    </message>
</context>
<context>
    <name>CChildCtrlMenu</name>
    <message>
        <source>右键菜单：</source>
        <translation>Right click:</translation>
    </message>
    <message>
        <source>单击菜单：</source>
        <translation>Click:</translation>
    </message>
    <message>
        <source>选择菜单</source>
        <translation>Choose a menu</translation>
    </message>
    <message>
        <source>取消绑定</source>
        <translation>Unbind</translation>
    </message>
</context>
</TS>
