<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgStyleManager</name>
    <message>
        <source>方案选择</source>
        <translation>Styles</translation>
    </message>
    <message>
        <source>应用方案</source>
        <translation>Apply</translation>
    </message>
    <message>
        <source>保存方案</source>
        <translation>Save...</translation>
    </message>
    <message>
        <source>重置风格</source>
        <translation>Reset</translation>
    </message>
    <message>
        <source>删除方案</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>方案设计</source>
        <translation>Design</translation>
    </message>
    <message>
        <source>文字字体</source>
        <translation>Fonts</translation>
    </message>
    <message>
        <source>控件外观</source>
        <translation>Elements</translation>
    </message>
    <message>
        <source>动画速度：</source>
        <translation>Animation speed:</translation>
    </message>
    <message>
        <source>更改图片</source>
        <translation>Change Picture...</translation>
    </message>
</context>
<context>
    <name>CDlgElementEditor</name>
    <message>
        <source>字体...</source>
        <translation>Font...</translation>
    </message>
    <message>
        <source>颜色</source>
        <translation>Color</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Named colors</translation>
    </message>
    <message>
        <source>色板</source>
        <translation>Palette</translation>
    </message>
    <message>
        <source>还原此元素</source>
        <translation>Reset This Element</translation>
    </message>
    <message>
        <source>新建颜色...</source>
        <translation>New Color...</translation>
    </message>
    <message>
        <source>取自</source>
        <translation>From</translation>
    </message>
</context>
<context>
    <name>CDlgDesignButton</name>
    <message>
        <source>图片</source>
        <translation>Picture</translation>
    </message>
    <message>
        <source>更改图片</source>
        <translation>Change Picture...</translation>
    </message>
    <message>
        <source>编辑图片</source>
        <translation>Edit Picture</translation>
    </message>
    <message>
        <source>刷新图片</source>
        <translation>Refresh Picture</translation>
    </message>
    <message>
        <source>边界设置</source>
        <translation>Edges...</translation>
    </message>
    <message>
        <source>编辑图片保存后请点击刷新图片</source>
        <translation>After saving the edited picture, click Refresh Picture</translation>
    </message>
</context>
<context>
    <name>CDlgDesignFont</name>
    <message>
        <source>字体</source>
        <translation>Font</translation>
    </message>
    <message>
        <source>从文件添加...</source>
        <translation>Add from a File...</translation>
    </message>
    <message>
        <source>移除</source>
        <translation>Remove</translation>
    </message>
    <message>
        <source>版权与许可</source>
        <translation>Copyright and Licence</translation>
    </message>
</context>
<context>
    <name>CChildElementText</name>
    <message>
        <source>文字</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>字号</source>
        <translation>Size</translation>
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
        <source>阴影</source>
        <translation>Shadow</translation>
    </message>
    <message>
        <source>文字颜色</source>
        <translation>Text Color</translation>
    </message>
</context>
</TS>
