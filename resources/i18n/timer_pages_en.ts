<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgPropTimer</name>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>回车↙</source>
        <translation>Enter ↙</translation>
    </message>
    <message>
        <source>总时间</source>
        <translation>Total Time</translation>
    </message>
    <message>
        <source>修改总时间</source>
        <translation>Changes the total time</translation>
    </message>
    <message>
        <source>自动播放</source>
        <translation>Auto Play</translation>
    </message>
    <message>
        <source>播放方式</source>
        <translation>Play Mode</translation>
    </message>
</context>
<context>
    <name>CDlgPropTimerAnimation</name>
    <message>
        <source>计时模式</source>
        <translation>Time Mode</translation>
    </message>
    <message>
        <source>“秒”模式</source>
        <translation>Seconds</translation>
    </message>
    <message>
        <source>“帧”模式</source>
        <translation>Frames</translation>
    </message>
    <message>
        <source>帧率</source>
        <translation>Frame Rate</translation>
    </message>
    <message>
        <source>动画对象列表</source>
        <translation>Timer Objects</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>更换目标...</source>
        <translation>Retarget...</translation>
    </message>
    <message>
        <source>让当前动画对象控制另一个对象，保留其关键帧</source>
        <translation>Lets the current timer object drive another object, with the same keys</translation>
    </message>
    <message>
        <source>对象控制</source>
        <translation>Channels</translation>
    </message>
    <message>
        <source>位置</source>
        <translation>Position</translation>
    </message>
    <message>
        <source>旋转</source>
        <translation>Rotation</translation>
    </message>
    <message>
        <source>缩放</source>
        <translation>Scale</translation>
    </message>
    <message>
        <source>颜色</source>
        <translation>Color</translation>
    </message>
    <message>
        <source>透明度</source>
        <translation>Transparency</translation>
    </message>
    <message>
        <source>显示/隐藏</source>
        <translation>Show/Hide</translation>
    </message>
    <message>
        <source>脚本对象</source>
        <translation>Script Object</translation>
    </message>
    <message>
        <source>添加脚本对象</source>
        <translation>Add Script Object</translation>
    </message>
    <message>
        <source>...</source>
        <translation>...</translation>
    </message>
    <message>
        <source>编辑脚本命令</source>
        <translation>Edits the script command</translation>
    </message>
    <message>
        <source>↑编辑脚本请按回车确认</source>
        <translation>↑ Enter applies the script</translation>
    </message>
    <message>
        <source>隐藏系统变量</source>
        <translation>Hide System Variables</translation>
    </message>
    <message>
        <source>变量名称</source>
        <translation>Variable</translation>
    </message>
    <message>
        <source>添加变量</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>删除变量</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>激活/关闭</source>
        <translation>Deactivate</translation>
    </message>
    <message>
        <source>不再选中变量</source>
        <translation>No variable is the current one any more</translation>
    </message>
</context>
<context>
    <name>CDlgPropTimerScript</name>
    <message>
        <source>新建</source>
        <translation>New</translation>
    </message>
    <message>
        <source>修改脚本</source>
        <translation>Edit Script</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>修改时间</source>
        <translation>Change Time</translation>
    </message>
</context>
<context>
    <name>CDlgTargetPick</name>
    <message>
        <source>筛选</source>
        <translation>Filter</translation>
    </message>
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
    <name>CDlgStrCmd</name>
    <message>
        <source>筛选</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>对象</source>
        <translation>Object</translation>
    </message>
    <message>
        <source>对象的名称或编号</source>
        <translation>The name or id of the object</translation>
    </message>
    <message>
        <source>参数</source>
        <translation>Parameter</translation>
    </message>
    <message>
        <source>命令</source>
        <translation>The command</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
</TS>
